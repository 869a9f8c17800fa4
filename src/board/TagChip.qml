import QtQuick
import QtQuick.Controls
import Velto

// One tag of a card: its colour as a dot and its name, in an outlined capsule.
Control {
    id: chip

    required property string name
    // The stored colour of the tag.
    required property string color

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
            anchors.verticalCenter: parent.verticalCenter
            hex: chip.color
            size: 6
        }

        Text {
            objectName: "tagChipName"
            anchors.verticalCenter: parent.verticalCenter
            text: chip.name
            font.pixelSize: 11
            color: Theme.pick("#ACA69C", "#7A756C")
        }
    }
}
