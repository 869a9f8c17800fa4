import QtQuick
import QtQuick.Controls
import Velto

// One tag of a card: its colour as a dot and its name, in an outlined capsule.
Control {
    id: chip

    required property string name
    // The stored colour of the tag.
    required property string color
    // A chip never runs past the card's edge; a long name ends in an ellipsis instead.
    property real maximumWidth: Number.POSITIVE_INFINITY

    // Counted from the name's natural width, not the row's, which shrinks as the name is elided.
    implicitWidth: leftPadding + rightPadding + dot.width + 4 + nameText.implicitWidth
    width: Math.min(chip.implicitWidth, chip.maximumWidth)

    leftPadding: 7
    rightPadding: 7
    topPadding: 2
    bottomPadding: 2

    background: Rectangle {
        radius: 5
        color: "transparent"
        border.width: 1
        border.color: Theme.pick("#3F3B33", "#E0DCD4")
    }

    contentItem: Row {
        spacing: 4

        Swatch {
            id: dot
            anchors.verticalCenter: parent.verticalCenter
            hex: chip.color
            size: 6
        }

        Text {
            id: nameText
            objectName: "tagChipName"
            anchors.verticalCenter: parent.verticalCenter
            text: chip.name
            width: Math.min(implicitWidth, chip.availableWidth - dot.width - 4)
            elide: Text.ElideRight
            font.pixelSize: 11
            color: Theme.pick("#ACA69C", "#7A756C")
        }
    }
}
