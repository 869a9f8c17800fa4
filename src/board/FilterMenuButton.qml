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
    onClicked: {
        // The menu hangs below the button and never covers it: what does not fit scrolls.
        menu.roomBelowButton = button.Window.height - button.mapToItem(null, 0, button.height).y - 8
        menu.open()
    }

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
            implicitWidth: Math.max(implicitHeight, digit.advanceWidth * String(button.count).length + 8)
            implicitHeight: digit.height + 2
            radius: height / 2
            color: Theme.accent

            Text {
                objectName: "filterCount"
                anchors.centerIn: parent
                text: button.count > 0 ? String(button.count) : ""
                // White on the accent fill, in both appearances.
                color: "#FFFFFF"
                font: digit.font
            }
        }
    }

    background: Rectangle {
        radius: 6
        color: button.down || menu.visible ? Theme.secondaryFill : "transparent"
        border.width: button.visualFocus ? 1 : 0
        border.color: Theme.accent
    }

    // The badge gives every digit the width of a zero, so that it keeps its size as the count
    // changes.
    TextMetrics {
        id: digit
        font.pointSize: 10.5 * 0.75
        font.weight: Font.DemiBold
        text: "0"
    }

    FilterMenu {
        id: menu
        y: button.height
        model: button.model
    }
}
