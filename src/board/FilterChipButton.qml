import QtQuick
import QtQuick.Controls
import Velto

// One restriction in force, as a capsule; clicking anywhere on it lifts that restriction.
AbstractButton {
    id: chip

    required property string chipID
    required property string label
    // A stored project or tag colour, or "" for a chip without a dot.
    required property string colorHex

    objectName: "filterChip"
    hoverEnabled: true
    leftPadding: 8
    rightPadding: 8
    topPadding: 3
    bottomPadding: 3
    Accessible.name: chip.label

    ToolTip.visible: chip.hovered
    ToolTip.text: "Remove this filter"

    contentItem: Row {
        spacing: 5

        Swatch {
            objectName: "chipDot"
            anchors.verticalCenter: parent.verticalCenter
            visible: chip.colorHex !== ""
            hex: chip.colorHex
            size: 7
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: chip.label
            color: Theme.primaryText
            font.pointSize: 11.5 * 0.75
        }

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "xmark"
            size: 8
            color: Theme.secondaryText
        }
    }

    background: Rectangle {
        radius: height / 2
        color: Theme.pick("#26241F", "#FFFFFF")
        border.width: chip.visualFocus ? 1 : 0
        border.color: Theme.accent
    }
}
