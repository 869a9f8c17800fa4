pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Velto

// What a card offers on a secondary click. Entries that do not apply are left out rather than
// greyed, so the menu keeps its shape per card state.
Menu {
    id: menu
    required property BoardModel board
    required property var face
    required property bool timerRunsHere
    signal removeRequested()

    readonly property string cardID: face?.cardID ?? ""

    // Every status with its label and symbol; the card's own is marked by a symbol of its own.
    readonly property var statusEntries: {
        const entries = []
        for (let index = 0; index < BoardVocabulary.statusCount; ++index) {
            const symbol = index === face?.status ? "largecircle.fill.circle" : BoardVocabulary.statusSymbol(index)
            entries.push({ index: index, label: BoardVocabulary.statusLabel(index),
                           symbolURL: "qrc:/qt/qml/Velto/app/symbols/" + symbol + ".svg" })
        }
        return entries
    }


    component Entry: MenuItem {
        height: visible ? implicitHeight : 0
    }
    component Rule: MenuSeparator {
        height: visible ? implicitHeight : 0
    }

    Entry {
        objectName: "menuOpen"
        text: PlatformWords.openInFileManager
        onTriggered: menu.board.requestOpenInFinder(menu.cardID)
    }
    Entry {
        objectName: "menuCopyBriefing"
        text: "Copy Briefing"
        onTriggered: menu.board.requestCopyBriefing(menu.cardID)
    }
    Entry {
        objectName: "menuTimer"
        text: menu.timerRunsHere ? "Stop Timer" : "Start Timer"
        onTriggered: menu.board.requestToggleTimer(menu.cardID)
    }
    Rule {}
    Entry {
        objectName: "menuSortNotice"
        visible: menu.board.sortByPriority
        text: "Sorting by Priority — turn off to reorder by hand"
        onTriggered: menu.board.sortByPriority = false
    }
    Entry {
        objectName: "menuMoveTop"
        visible: !menu.board.sortByPriority
        text: "Move to Top"
        onTriggered: menu.board.requestMoveInColumn(menu.cardID, 0)
    }
    Entry {
        objectName: "menuMoveUp"
        visible: !menu.board.sortByPriority
        text: "Move Up"
        onTriggered: menu.board.requestMoveInColumn(menu.cardID, 1)
    }
    Entry {
        objectName: "menuMoveDown"
        visible: !menu.board.sortByPriority
        text: "Move Down"
        onTriggered: menu.board.requestMoveInColumn(menu.cardID, 2)
    }
    Entry {
        objectName: "menuMoveBottom"
        visible: !menu.board.sortByPriority
        text: "Move to Bottom"
        onTriggered: menu.board.requestMoveInColumn(menu.cardID, 3)
    }

    Menu {
        id: statusMenu
        title: "Status"
        Instantiator {
            // The entries are read from the model rather than from the menu: an entry is made while
            // the menu itself is still being made, and would never see the card.
            model: menu.statusEntries
            delegate: MenuItem {
                required property var modelData
                objectName: "statusEntry" + modelData.index
                text: modelData.label
                icon.source: modelData.symbolURL
                onTriggered: menu.board.requestSetStatus(menu.cardID, modelData.index)
            }
            onObjectAdded: (index, object) => statusMenu.insertItem(index, object)
            onObjectRemoved: (index, object) => statusMenu.removeItem(object)
        }
    }
    Menu {
        id: priorityMenu
        title: "Priority"
        Instantiator {
            model: BoardVocabulary.priorityCount
            delegate: MenuItem {
                required property int index
                text: BoardVocabulary.priorityLabel(index)
                icon.source: "qrc:/qt/qml/Velto/app/symbols/" + BoardVocabulary.prioritySymbol(index) + ".svg"
                onTriggered: menu.board.requestSetPriority(menu.cardID, index)
            }
            onObjectAdded: (index, object) => priorityMenu.insertItem(index, object)
            onObjectRemoved: (index, object) => priorityMenu.removeItem(object)
        }
    }
    Menu {
        id: projectMenu
        title: "Project"
        MenuItem {
            text: "None"
            onTriggered: menu.board.requestSetProject(menu.cardID, "")
        }
        MenuSeparator {}
        Instantiator {
            model: menu.board.projectList
            delegate: MenuItem {
                required property var modelData
                text: modelData.name
                onTriggered: menu.board.requestSetProject(menu.cardID, modelData.id)
            }
            onObjectAdded: (index, object) => projectMenu.insertItem(index + 2, object)
            onObjectRemoved: (index, object) => projectMenu.removeItem(object)
        }
        MenuSeparator {}
        MenuItem {
            text: "New Project…"
            onTriggered: menu.board.isManagingTaxonomy = true
        }
    }
    Rule {}
    Entry {
        objectName: "menuLocate"
        visible: menu.face?.needsLocate ?? false
        text: "Locate…"
        onTriggered: menu.board.requestLocate(menu.cardID)
    }
    Rule {
        visible: menu.face?.needsLocate ?? false
    }
    Entry {
        objectName: "menuRemove"
        text: "Remove from Board…"
        onTriggered: menu.removeRequested()
    }
}
