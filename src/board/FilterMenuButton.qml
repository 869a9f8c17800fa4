import QtQuick
import QtQuick.Controls
import Velto

// The borderless "Filter" button that opens the filter menu; a badge counts the restrictions in
// force, the priority sort and hidden columns included.
AbstractButton {
    id: button

    required property BoardModel model
    required property int count

    objectName: "filterButton"
    hoverEnabled: true
    leftPadding: 10
    rightPadding: 10
    topPadding: 4
    bottomPadding: 4
    Accessible.role: Accessible.ButtonMenu
    Accessible.name: "Filter"
    Accessible.description: button.count > 0 ? String(button.count) : ""
    onClicked: menu.open()

    contentItem: Row {
        spacing: 5

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "line.3.horizontal.decrease"
            size: 11
            color: Theme.primaryText
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: "Filter"
            color: Theme.primaryText
            font.pointSize: 12.5 * 0.75
        }

        Rectangle {
            objectName: "filterCountBadge"
            anchors.verticalCenter: parent.verticalCenter
            visible: button.count > 0
            implicitWidth: Math.max(implicitHeight, countText.width + 8)
            implicitHeight: countText.implicitHeight + 2
            radius: height / 2
            color: Theme.accent

            // Every digit takes the width of the widest one, so the badge keeps its size as the
            // count changes.
            TextMetrics {
                id: digit
                font: countText.font
                text: "0"
            }

            Text {
                id: countText
                objectName: "filterCount"
                anchors.centerIn: parent
                width: Math.max(implicitWidth, digit.advanceWidth * text.length)
                horizontalAlignment: Text.AlignHCenter
                text: button.count > 0 ? String(button.count) : ""
                // White on the accent fill, in both appearances.
                color: "#FFFFFF"
                font.pointSize: 10.5 * 0.75
                font.weight: Font.DemiBold
            }
        }
    }

    background: Rectangle {
        radius: 6
        color: button.down || menu.visible ? Theme.secondaryFill : "transparent"
        border.width: button.visualFocus ? 1 : 0
        border.color: Theme.accent
    }

    FilterMenu {
        id: menu
        y: button.height
        model: button.model
    }
}
