pragma ComponentBehavior: Bound
import QtQml
import QtQuick
import QtQuick.Controls
import Velto

// What narrows the board, in groups: the project, priorities, tags, the columns shown and their
// sorting; and the way to the projects and tags sheet. Every line reads and writes the model, so
// a chip cleared under the bar unticks its line here too.
Menu {
    id: menu

    required property BoardModel model

    // The lines made for projects, priorities, tags and statuses go in after their group's first
    // fixed line, in the order they are made.
    function insertAfter(anchor, offset, item) {
        for (let i = 0; i < menu.count; ++i) {
            if (menu.itemAt(i) === anchor) {
                menu.insertItem(i + 1 + offset, item)
                return
            }
        }
    }

    component SectionHeader: MenuItem {
        enabled: false
        font.weight: Font.DemiBold
    }

    objectName: "filterMenu"

    ButtonGroup {
        id: projectChoice
    }

    SectionHeader {
        text: "Project"
    }

    FilterMenuItem {
        text: "All Projects"
        checkable: true
        checked: menu.model.projectFilterKind === "any"
        ButtonGroup.group: projectChoice
        onTriggered: menu.model.setProjectFilter("any", "")
    }

    FilterMenuItem {
        text: "No Project"
        checkable: true
        checked: menu.model.projectFilterKind === "unassigned"
        ButtonGroup.group: projectChoice
        onTriggered: menu.model.setProjectFilter("unassigned", "")
    }

    MenuSeparator {
        id: projectsStart
    }

    Instantiator {
        model: menu.model.projectList
        onObjectAdded: (index, object) => menu.insertAfter(projectsStart, index, object)
        onObjectRemoved: (index, object) => menu.removeItem(object)

        delegate: FilterMenuItem {
            id: projectItem
            required property var modelData

            label: projectItem.modelData.name
            dotColor: projectItem.modelData.color
            checkable: true
            // A line taken down after its project went loses the menu a moment before it is gone.
            checked: menu !== null && menu.model.projectFilterKind === "project"
                     && menu.model.projectFilterID === projectItem.modelData.id
            ButtonGroup.group: projectChoice
            onTriggered: menu.model.setProjectFilter("project", projectItem.modelData.id)
        }
    }

    MenuSeparator {}

    SectionHeader {
        id: priorityHeader
        text: "Priority"
    }

    Instantiator {
        model: BoardVocabulary.priorityCount
        onObjectAdded: (index, object) => menu.insertAfter(priorityHeader, index, object)
        onObjectRemoved: (index, object) => menu.removeItem(object)

        delegate: FilterMenuItem {
            id: priorityItem
            required property int index

            text: BoardVocabulary.priorityLabel(priorityItem.index)
            symbol: BoardVocabulary.prioritySymbol(priorityItem.index)
            checkable: true
            checked: menu.model.selectedPriorities.includes(priorityItem.index)
            onToggled: menu.model.setPriorityShown(priorityItem.index, priorityItem.checked)
        }
    }

    MenuSeparator {}

    SectionHeader {
        id: tagsHeader
        text: "Tags"
    }

    Instantiator {
        model: menu.model.tagList
        onObjectAdded: (index, object) => menu.insertAfter(tagsHeader, index, object)
        onObjectRemoved: (index, object) => menu.removeItem(object)

        delegate: FilterMenuItem {
            id: tagItem
            required property var modelData

            label: tagItem.modelData.name
            dotColor: tagItem.modelData.color
            checkable: true
            // As for projects, a line of a tag that went may outlive the menu's reach.
            checked: menu !== null && menu.model.selectedTagIDs.includes(tagItem.modelData.id)
            onToggled: menu.model.setTagShown(tagItem.modelData.id, tagItem.checked)
        }
    }

    MenuItem {
        id: noTags
        text: "No tags yet"
        enabled: false
        visible: menu.model.tagList.length === 0
        // A hidden line of a menu would still take its height.
        height: noTags.visible ? noTags.implicitHeight : 0
    }

    MenuSeparator {}

    SectionHeader {
        id: columnsHeader
        text: "Columns"
    }

    Instantiator {
        model: BoardVocabulary.statusCount
        onObjectAdded: (index, object) => menu.insertAfter(columnsHeader, index, object)
        onObjectRemoved: (index, object) => menu.removeItem(object)

        delegate: FilterMenuItem {
            id: statusItem
            required property int index

            text: BoardVocabulary.statusLabel(statusItem.index)
            symbol: BoardVocabulary.statusSymbol(statusItem.index)
            checkable: true
            checked: menu.model.visibleStatuses.includes(statusItem.index)
            onToggled: menu.model.setStatusVisible(statusItem.index, statusItem.checked)
        }
    }

    FilterMenuItem {
        id: sortItem
        text: "Sort columns by priority"
        checkable: true
        checked: menu.model.sortByPriority
        onToggled: menu.model.sortByPriority = sortItem.checked
    }

    MenuSeparator {}

    MenuItem {
        // Doubled, the ampersand shows as itself rather than marking a mnemonic.
        text: "Manage Projects && Tags…"
        onTriggered: menu.model.isManagingTaxonomy = true
    }
}
