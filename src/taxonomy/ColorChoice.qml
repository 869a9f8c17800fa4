pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQml
import Velto

// The colour menu of a project or a tag: a swatch of the current colour that opens the palette.
// It never changes `selection` itself; it reports the choice, and the owner stores it, so that the
// swatch always shows what is really stored.
AbstractButton {
    id: choice

    property string selection
    signal picked(string color)

    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    leftPadding: 5
    rightPadding: 5
    topPadding: 3
    bottomPadding: 3

    Accessible.name: "Change colour"
    ToolTip.text: "Change colour"
    ToolTip.visible: choice.hovered
    ToolTip.delay: 600

    onClicked: paletteMenu.popup(choice, 0, choice.height)
    Keys.onDownPressed: paletteMenu.popup(choice, 0, choice.height)

    contentItem: Row {
        spacing: 3

        Swatch {
            hex: choice.selection
            size: 12
            bordered: true
            anchors.verticalCenter: parent.verticalCenter
        }
        Symbol {
            name: "chevron.down"
            size: 7
            color: Theme.secondaryText
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    background: Rectangle {
        radius: 5
        // The faintest system fill, a grey at a few percent over whatever lies beneath.
        color: Theme.pick("#2E767680", "#14747480")
        border.width: choice.visualFocus ? 1 : 0
        border.color: Theme.accent
    }

    Menu {
        id: paletteMenu
        objectName: "colorMenu"

        Instantiator {
            model: PaletteColors.paletteSlots
            onObjectAdded: (index, entry) => paletteMenu.insertItem(index, entry)
            onObjectRemoved: (index, entry) => paletteMenu.removeItem(entry)

            delegate: MenuItem {
                id: entry
                required property var modelData
                readonly property bool isSelection: entry.modelData.light === choice.selection

                objectName: "colorEntry" + entry.modelData.name
                text: entry.modelData.name
                onTriggered: choice.picked(entry.modelData.light)

                contentItem: Row {
                    spacing: 8

                    Symbol {
                        name: entry.isSelection ? "largecircle.fill.circle" : "circle.fill"
                        size: 12
                        color: PaletteColors.resolve(entry.modelData.light, Theme.dark)
                        anchors.verticalCenter: parent.verticalCenter
                    }
                    Label {
                        text: entry.text
                        color: entry.highlighted ? entry.palette.highlightedText : entry.palette.text
                        anchors.verticalCenter: parent.verticalCenter
                    }
                }
            }
        }
    }
}
