import QtQuick
import QtQuick.Controls
import Velto

// The main window's menus. Every entry hands over to a command, which reads the models at the
// moment it runs; the windows it opens are the main window's business.
MenuBar {
    id: bar
    required property VeltoCommands commands
    signal settingsRequested()
    signal analyticsRequested()
    signal diagnosticsRequested()
    signal shortcutsRequested()

    // A menu is as wide as its style says, not as its entries; these need room for their keys.
    readonly property int menuWidth: 340

    Menu {
        objectName: "fileMenu"
        width: bar.menuWidth
        title: "&File"
        CommandItem {
            objectName: "addFolderCommand"
            action: Action {
                text: "Add Folder…"
                shortcut: MenuShortcuts.addFolder
                enabled: bar.commands.canAddFolder
                onTriggered: bar.commands.addFolder()
            }
        }
        CommandItem {
            objectName: "openInFileManagerCommand"
            action: Action {
                text: PlatformWords.openInFileManager
                shortcut: MenuShortcuts.openInFileManager
                enabled: bar.commands.canOpenInFileManager
                onTriggered: bar.commands.openInFileManager()
            }
        }
        MenuSeparator {}
        CommandItem {
            objectName: "settingsCommand"
            action: Action {
                text: "Settings…"
                shortcut: MenuShortcuts.settings
                onTriggered: bar.settingsRequested()
            }
        }
        MenuSeparator {}
        CommandItem {
            objectName: "quitCommand"
            action: Action {
                text: "Quit"
                shortcut: MenuShortcuts.quit
                // Through the application's quit, which first closes a running session.
                onTriggered: Qt.quit()
            }
        }
    }
    Menu {
        objectName: "viewMenu"
        width: bar.menuWidth
        title: "&View"
        CommandItem {
            objectName: "refreshCommand"
            action: Action {
                text: "Refresh"
                shortcut: MenuShortcuts.refresh
                enabled: bar.commands.canRefresh
                onTriggered: bar.commands.refresh()
            }
        }
        CommandItem {
            objectName: "manageTaxonomyCommand"
            action: Action {
                text: "Projects & Tags…"
                shortcut: MenuShortcuts.manageTaxonomy
                enabled: bar.commands.canManageTaxonomy
                onTriggered: bar.commands.manageTaxonomy()
            }
        }
        MenuSeparator {}
        CommandItem {
            objectName: "analyticsCommand"
            action: Action {
                text: "Analytics"
                shortcut: MenuShortcuts.analytics
                onTriggered: bar.analyticsRequested()
            }
        }
        CommandItem {
            objectName: "diagnosticsCommand"
            action: Action {
                text: "Diagnostics"
                shortcut: MenuShortcuts.diagnostics
                onTriggered: bar.diagnosticsRequested()
            }
        }
    }
    Menu {
        id: cardMenu
        objectName: "cardMenu"
        width: bar.menuWidth
        title: "&Card"
        CommandItem {
            objectName: "moveTopCommand"
            action: Action {
                text: "Move to Top"
                enabled: bar.commands.canMove
                onTriggered: bar.commands.moveSelectedCard(0)
            }
        }
        CommandItem {
            objectName: "moveUpCommand"
            action: Action {
                text: "Move Up"
                shortcut: MenuShortcuts.moveUp
                enabled: bar.commands.canMove
                onTriggered: bar.commands.moveSelectedCard(1)
            }
        }
        CommandItem {
            objectName: "moveDownCommand"
            action: Action {
                text: "Move Down"
                shortcut: MenuShortcuts.moveDown
                enabled: bar.commands.canMove
                onTriggered: bar.commands.moveSelectedCard(2)
            }
        }
        CommandItem {
            objectName: "moveBottomCommand"
            action: Action {
                text: "Move to Bottom"
                enabled: bar.commands.canMove
                onTriggered: bar.commands.moveSelectedCard(3)
            }
        }
        CommandItem {
            objectName: "movePreviousColumnCommand"
            action: Action {
                text: "Move to Previous Column"
                shortcut: MenuShortcuts.moveLeft
                enabled: bar.commands.canSetStatus
                onTriggered: bar.commands.moveSelectedCardAcross(-1)
            }
        }
        CommandItem {
            objectName: "moveNextColumnCommand"
            action: Action {
                text: "Move to Next Column"
                shortcut: MenuShortcuts.moveRight
                enabled: bar.commands.canSetStatus
                onTriggered: bar.commands.moveSelectedCardAcross(1)
            }
        }
        MenuSeparator {}
        Menu {
            id: statusMenu
            objectName: "statusCommandMenu"
            title: "Status"
            enabled: bar.commands.canSetStatus
            Instantiator {
                model: BoardVocabulary.statusCount
                delegate: MenuItem {
                    required property int index
                    objectName: "statusCommand" + index
                    text: BoardVocabulary.statusLabel(index)
                    onTriggered: bar.commands.setSelectedCardStatus(index)
                }
                onObjectAdded: (index, object) => statusMenu.insertItem(index, object)
                onObjectRemoved: (index, object) => statusMenu.removeItem(object)
            }
        }
        MenuSeparator {}
        MenuItem {
            objectName: "sortByPriorityCommand"
            text: "Sort Columns by Priority"
            checkable: true
            checked: bar.commands.sortByPriority
            enabled: bar.commands.canToggleSortByPriority
            onTriggered: {
                bar.commands.sortByPriority = checked
                checked = Qt.binding(() => bar.commands.sortByPriority)
            }
        }
    }
    Menu {
        objectName: "timerMenu"
        width: bar.menuWidth
        title: "&Timer"
        CommandItem {
            objectName: "startTimerCommand"
            action: Action {
                text: "Start Timer on Selected Card"
                shortcut: MenuShortcuts.startTimer
                enabled: bar.commands.canStartTimer
                onTriggered: bar.commands.startTimerOnSelectedCard()
            }
        }
        CommandItem {
            objectName: "stopTimerCommand"
            action: Action {
                text: "Stop Timer"
                shortcut: MenuShortcuts.stopTimer
                enabled: bar.commands.canStopTimer
                onTriggered: bar.commands.stopTimer()
            }
        }
    }
    Menu {
        objectName: "helpMenu"
        width: bar.menuWidth
        title: "&Help"
        CommandItem {
            objectName: "shortcutsCommand"
            action: Action {
                text: "Keyboard Shortcuts"
                shortcut: MenuShortcuts.shortcuts
                onTriggered: bar.shortcutsRequested()
            }
        }
    }
}
