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
        objectName: "allProjectsItem"
        text: "All Projects"
        checkable: true
        ButtonGroup.group: projectChoice
        onTriggered: menu.model.setProjectFilter("any", "")

        Binding on checked {
            value: menu.model.projectFilterKind === "any"
        }
    }

    FilterMenuItem {
        objectName: "noProjectItem"
        text: "No Project"
        checkable: true
        ButtonGroup.group: projectChoice
        onTriggered: menu.model.setProjectFilter("unassigned", "")

        Binding on checked {
            value: menu.model.projectFilterKind === "unassigned"
        }
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

            objectName: "projectItem"
            label: projectItem.modelData.name
            dotColor: projectItem.modelData.color
            checkable: true
            ButtonGroup.group: projectChoice
            onTriggered: menu.model.setProjectFilter("project", projectItem.modelData.id)

            // A line taken down after its project went loses the menu a moment before it is gone.
            Binding on checked {
                value: menu !== null && menu.model.projectFilterKind === "project"
                       && menu.model.projectFilterID === projectItem.modelData.id
            }
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

            objectName: "priorityItem"
            text: BoardVocabulary.priorityLabel(priorityItem.index)
            symbol: BoardVocabulary.prioritySymbol(priorityItem.index)
            checkable: true
            onToggled: menu.model.setPriorityShown(priorityItem.index, priorityItem.checked)

            Binding on checked {
                value: menu.model.selectedPriorities.includes(priorityItem.index)
            }
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

            objectName: "tagItem"
            label: tagItem.modelData.name
            dotColor: tagItem.modelData.color
            checkable: true
            onToggled: menu.model.setTagShown(tagItem.modelData.id, tagItem.checked)

            // As for projects, a line of a tag that went may outlive the menu's reach.
            Binding on checked {
                value: menu !== null && menu.model.selectedTagIDs.includes(tagItem.modelData.id)
            }
        }
    }

    MenuItem {
        id: noTags
        objectName: "noTagsItem"
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

            objectName: "statusItem"
            text: BoardVocabulary.statusLabel(statusItem.index)
            symbol: BoardVocabulary.statusSymbol(statusItem.index)
            checkable: true
            onToggled: menu.model.setStatusVisible(statusItem.index, statusItem.checked)

            Binding on checked {
                value: menu.model.visibleStatuses.includes(statusItem.index)
            }
        }
    }

    FilterMenuItem {
        id: sortItem
        objectName: "sortByPriorityItem"
        text: "Sort columns by priority"
        checkable: true
        onToggled: menu.model.sortByPriority = sortItem.checked

        Binding on checked {
            value: menu.model.sortByPriority
        }
    }

    MenuSeparator {}

    MenuItem {
        objectName: "manageTaxonomyItem"
        // Doubled, the ampersand shows as itself rather than marking a mnemonic.
        text: "Manage Projects && Tags…"
        onTriggered: menu.model.isManagingTaxonomy = true
    }
}
