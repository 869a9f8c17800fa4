import QtQuick
import QtQuick.Controls
import Velto

// What is wrong with a card's folder, in a warning capsule; the help text says what to do.
Control {
    id: chip

    property string symbol
    property string label
    property string help

    readonly property color tint: Theme.pick("#E5C07B", "#7A5B12")

    leftPadding: 7
    rightPadding: 7
    topPadding: 5
    bottomPadding: 5
    hoverEnabled: true

    ToolTip.text: chip.help
    ToolTip.visible: chip.hovered
    ToolTip.delay: 500

    background: Rectangle {
        radius: 6
        color: Theme.pick("#2B2418", "#F7EFDD")
        border.width: 1
        border.color: Theme.pick("#4A3C22", "#EFE2C6")
    }

    contentItem: Row {
        spacing: 5

        Symbol {
            objectName: "repairChipSymbol"
            anchors.verticalCenter: parent.verticalCenter
            name: chip.symbol
            size: 11
            color: chip.tint
        }

        Text {
            objectName: "repairChipLabel"
            anchors.verticalCenter: parent.verticalCenter
            text: chip.label
            font.pixelSize: 11
            color: chip.tint
        }
    }
}
