pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Velto

// What a card offers on a secondary click. Entries that do not apply are left out rather than
// greyed, so the menu keeps its shape per card state.
Menu {
    // Not `menu`: inside a MenuItem that name is the item's own menu, which for the entries of a
    // submenu is the submenu, and has no board.
    id: root
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
        onTriggered: root.board.requestOpenInFinder(root.cardID)
    }
    Entry {
        objectName: "menuCopyBriefing"
        text: "Copy Briefing"
        onTriggered: root.board.requestCopyBriefing(root.cardID)
    }
    Entry {
        objectName: "menuTimer"
        text: root.timerRunsHere ? "Stop Timer" : "Start Timer"
        onTriggered: root.board.requestToggleTimer(root.cardID)
    }
    Rule {}
    Entry {
        objectName: "menuSortNotice"
        visible: root.board.sortByPriority
        text: "Sorting by Priority — turn off to reorder by hand"
        onTriggered: root.board.sortByPriority = false
    }
    Entry {
        objectName: "menuMoveTop"
        visible: !root.board.sortByPriority
        text: "Move to Top"
        onTriggered: root.board.requestMoveInColumn(root.cardID, 0)
    }
    Entry {
        objectName: "menuMoveUp"
        visible: !root.board.sortByPriority
        text: "Move Up"
        onTriggered: root.board.requestMoveInColumn(root.cardID, 1)
    }
    Entry {
        objectName: "menuMoveDown"
        visible: !root.board.sortByPriority
        text: "Move Down"
        onTriggered: root.board.requestMoveInColumn(root.cardID, 2)
    }
    Entry {
        objectName: "menuMoveBottom"
        visible: !root.board.sortByPriority
        text: "Move to Bottom"
        onTriggered: root.board.requestMoveInColumn(root.cardID, 3)
    }

    Menu {
        id: statusMenu
        objectName: "statusMenu"
        title: "Status"
        Instantiator {
            // The entries are read from the model rather than from the menu: an entry is made while
            // the menu itself is still being made, and would never see the card.
            model: root.statusEntries
            delegate: MenuItem {
                required property var modelData
                objectName: "statusEntry" + modelData.index
                text: modelData.label
                icon.source: modelData.symbolURL
                onTriggered: root.board.requestSetStatus(root.cardID, modelData.index)
            }
            onObjectAdded: (index, object) => statusMenu.insertItem(index, object)
            onObjectRemoved: (index, object) => statusMenu.removeItem(object)
        }
    }
    Menu {
        id: priorityMenu
        objectName: "priorityMenu"
        title: "Priority"
        Instantiator {
            model: BoardVocabulary.priorityCount
            delegate: MenuItem {
                required property int index
                objectName: "priorityEntry" + index
                text: BoardVocabulary.priorityLabel(index)
                icon.source: "qrc:/qt/qml/Velto/app/symbols/" + BoardVocabulary.prioritySymbol(index) + ".svg"
                onTriggered: root.board.requestSetPriority(root.cardID, index)
            }
            onObjectAdded: (index, object) => priorityMenu.insertItem(index, object)
            onObjectRemoved: (index, object) => priorityMenu.removeItem(object)
        }
    }
    Menu {
        id: projectMenu
        objectName: "projectMenu"
        title: "Project"
        MenuItem {
            objectName: "projectEntryNone"
            text: "None"
            onTriggered: root.board.requestSetProject(root.cardID, "")
        }
        MenuSeparator {}
        Instantiator {
            model: root.board.projectList
            delegate: MenuItem {
                required property var modelData
                objectName: "projectEntry_" + modelData.name
                text: modelData.name
                onTriggered: root.board.requestSetProject(root.cardID, modelData.id)
            }
            onObjectAdded: (index, object) => projectMenu.insertItem(index + 2, object)
            onObjectRemoved: (index, object) => projectMenu.removeItem(object)
        }
        MenuSeparator {}
        MenuItem {
            objectName: "newProjectEntry"
            text: "New Project…"
            onTriggered: root.board.isManagingTaxonomy = true
        }
    }
    Rule {}
    Entry {
        objectName: "menuLocate"
        visible: root.face?.needsLocate ?? false
        text: "Locate…"
        onTriggered: root.board.requestLocate(root.cardID)
    }
    Rule {
        visible: root.face?.needsLocate ?? false
    }
    Entry {
        objectName: "menuRemove"
        text: "Remove from Board…"
        onTriggered: root.removeRequested()
    }
}
