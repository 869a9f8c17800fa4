pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The strip above the board: how the board is looked at (mode, search, filters, lanes) and the
// way to add a folder; below them, while anything narrows the board, one chip per restriction.
// It edits the model directly and keeps nothing of its own, so a filter lasts for the run.
Rectangle {
    id: bar

    required property BoardModel model
    // The windows beside the board; whoever holds them opens them.
    signal analyticsRequested()
    signal diagnosticsRequested()

    function focusSearch() {
        search.takeKeyboard()
    }

    readonly property var chips: bar.model.chips

    implicitWidth: layout.implicitWidth
    implicitHeight: layout.implicitHeight
    color: Theme.pick("#171613", "#F4F3F0")

    ColumnLayout {
        id: layout
        anchors.left: parent.left
        anchors.right: parent.right
        spacing: 0

        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 14
            Layout.rightMargin: 14
            Layout.topMargin: 10
            Layout.bottomMargin: 10
            spacing: 10

            BoardModeSwitch {
                model: bar.model
            }

            BoardSearchField {
                id: search
                model: bar.model
                // Narrower, down to a point, rather than pushing "Add Folder" out of a narrow bar.
                textWidth: Math.max(100, Math.min(190, bar.width - 594))
            }

            FilterMenuButton {
                model: bar.model
                count: bar.chips.length
            }

            Item {
                Layout.fillWidth: true
            }

            BarIconButton {
                objectName: "analyticsButton"
                symbol: "chart.bar"
                help: "Show analytics (Ctrl+Shift+1)"
                onClicked: bar.analyticsRequested()
            }

            BarIconButton {
                objectName: "diagnosticsButton"
                symbol: "stethoscope"
                help: "Show diagnostics of the shared store (Ctrl+Shift+D)"
                onClicked: bar.diagnosticsRequested()
            }

            AbstractButton {
                id: groupToggle
                objectName: "groupByProjectToggle"
                checkable: true
                checked: bar.model.groupByProject
                hoverEnabled: true
                padding: 5
                onToggled: bar.model.groupByProject = groupToggle.checked

                ToolTip.visible: groupToggle.hovered
                ToolTip.text: "Group the board into a row of columns per project"

                contentItem: Symbol {
                    name: "rectangle.split.1x2"
                    size: 12
                    color: groupToggle.checked ? Theme.accent : Theme.secondaryText
                }

                background: Rectangle {
                    radius: 6
                    color: groupToggle.checked || groupToggle.down ? Theme.secondaryFill : "transparent"
                    border.width: groupToggle.visualFocus ? 1 : 0
                    border.color: Theme.accent
                }
            }

            AbstractButton {
                id: addFolder
                objectName: "addFolderButton"
                hoverEnabled: true
                leftPadding: 13
                rightPadding: 13
                topPadding: 6
                bottomPadding: 6
                onClicked: bar.model.requestAddFoldersFromPanel()

                ToolTip.visible: addFolder.hovered
                ToolTip.text: PlatformWords.addFolderHelp

                contentItem: Row {
                    spacing: 5

                    Symbol {
                        anchors.verticalCenter: parent.verticalCenter
                        name: "plus"
                        size: 11
                        // White on the accent fill, in both appearances.
                        color: "#FFFFFF"
                    }

                    Text {
                        anchors.verticalCenter: parent.verticalCenter
                        text: "Add Folder"
                        color: "#FFFFFF"
                        font.pointSize: 12.5 * 0.75
                        font.weight: Font.Medium
                    }
                }

                background: Rectangle {
                    radius: 7
                    color: addFolder.down ? Qt.darker(Theme.accent, 1.15) : Theme.accent
                    border.width: addFolder.visualFocus ? 2 : 0
                    border.color: Theme.primaryText
                }
            }
        }

        // Chips wrap onto further rows rather than run off a narrow window.
        FlowLayout {
            id: chipRow
            objectName: "chipRow"
            visible: bar.chips.length > 0
            Layout.fillWidth: true
            Layout.leftMargin: 14
            Layout.rightMargin: 14
            Layout.bottomMargin: 10
            spacing: 6

            Repeater {
                id: chipRepeater
                model: bar.chips

                delegate: FilterChipButton {
                    id: chipButton
                    required property var modelData

                    chipID: chipButton.modelData.id
                    label: chipButton.modelData.label
                    colorHex: chipButton.modelData.colorHex
                    onClicked: bar.model.clearChip(chipButton.chipID)
                }
            }

            AbstractButton {
                id: clearAll
                objectName: "clearAllButton"
                // As tall as a chip, so that the link sits on the chips' centre line.
                height: chipRepeater.count > 0 ? chipRepeater.itemAt(0).height : implicitHeight
                hoverEnabled: true
                onClicked: bar.model.clearAllFilters()

                contentItem: Text {
                    text: "Clear all"
                    color: Theme.accent
                    font.pointSize: 11.5 * 0.75
                    font.underline: clearAll.hovered || clearAll.visualFocus
                    verticalAlignment: Text.AlignVCenter
                }
            }
        }
    }
}
