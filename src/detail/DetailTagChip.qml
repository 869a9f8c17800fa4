pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Velto

// One tag of the card in the detail pane: its colour, its name and a cross that takes it off the
// card; a secondary click offers its colour and the same removal.
Control {
    id: chip

    required property string tagID
    required property string name
    // The stored colour of the tag.
    required property string color

    signal remove()
    signal recolor(string hex)

    objectName: "detailTagChip"
    leftPadding: 6
    rightPadding: 6
    topPadding: 2
    bottomPadding: 2

    background: Rectangle {
        radius: height / 2
        color: Theme.quaternaryFill
    }

    contentItem: Row {
        spacing: 4

        Swatch {
            anchors.verticalCenter: parent.verticalCenter
            hex: chip.color
            size: 6
        }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: chip.name
            font.pixelSize: 11
            color: Theme.primaryText
        }
        AbstractButton {
            objectName: "removeTagButton"
            anchors.verticalCenter: parent.verticalCenter
            Accessible.name: "Remove " + chip.name
            padding: 1
            onClicked: chip.remove()
            contentItem: Symbol {
                name: "xmark"
                size: 8
                color: Theme.secondaryText
            }
        }
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: chipMenu.popup()
    }

    Menu {
        id: chipMenu
        objectName: "tagChipMenu"

        Menu {
            id: colourMenu
            title: "Colour"
            Instantiator {
                model: PaletteColors.paletteSlots
                delegate: MenuItem {
                    id: entry
                    required property var modelData
                    objectName: "tagColourEntry" + entry.modelData.name
                    text: entry.modelData.name
                    icon.source: "qrc:/qt/qml/Velto/app/symbols/"
                                 + (entry.modelData.light === chip.color ? "largecircle.fill.circle" : "circle.fill") + ".svg"
                    icon.color: PaletteColors.resolve(entry.modelData.light, Theme.dark)
                    onTriggered: chip.recolor(entry.modelData.light)
                }
                onObjectAdded: (index, object) => colourMenu.insertItem(index, object)
                onObjectRemoved: (index, object) => colourMenu.removeItem(object)
            }
        }
        MenuItem {
            text: "Remove from Card"
            onTriggered: chip.remove()
        }
    }
}
