pragma ComponentBehavior: Bound
import QtQml
import QtQuick
import QtQuick.Controls
import Velto

// What narrows the board, in groups: the project, priorities, tags, the columns shown and their
// sorting; and the way to the projects and tags sheet. Every line reads and writes the model, so
// a chip cleared under the bar unticks its line here too.
Menu {
    // Not `menu`: inside a MenuItem that name is the item's own menu, null until the item is in one.
    id: root

    required property BoardModel model

    // The lines made for projects, priorities, tags and statuses go in after their group's first
    // fixed line, in the order they are made.
    function insertAfter(anchor, offset, item) {
        for (let i = 0; i < root.count; ++i) {
            if (root.itemAt(i) === anchor) {
                root.insertItem(i + 1 + offset, item)
                return
            }
        }
    }

    component SectionHeader: MenuItem {
        enabled: false
        font.weight: Font.DemiBold
    }

    // How tall the menu may be below its button; set by the button before it opens the menu.
    property real roomBelowButton: Number.POSITIVE_INFINITY

    objectName: "filterMenu"
    height: Math.min(root.implicitHeight, root.roomBelowButton)

    // The style's list scrolls only when the window itself is too short; this one scrolls whenever
    // the menu is shorter than its lines.
    contentItem: ListView {
        implicitHeight: contentHeight
        model: root.contentModel
        interactive: contentHeight > height
        clip: true
        currentIndex: root.currentIndex
        ScrollBar.vertical: ScrollBar {}
    }

    ButtonGroup {
        id: projectChoice
    }

    SectionHeader {
        text: "Project"
    }

    FilterMenuItem {
        text: "All Projects"
        objectName: "filterAllProjects"
        checkable: true
        checked: root.model.projectFilterKind === "any"
        ButtonGroup.group: projectChoice
        onTriggered: root.model.setProjectFilter("any", "")
    }

    FilterMenuItem {
        text: "No Project"
        objectName: "filterNoProject"
        checkable: true
        checked: root.model.projectFilterKind === "unassigned"
        ButtonGroup.group: projectChoice
        onTriggered: root.model.setProjectFilter("unassigned", "")
    }

    MenuSeparator {
        id: projectsStart
    }

    Instantiator {
        model: root.model.projectList
        onObjectAdded: (index, object) => root.insertAfter(projectsStart, index, object)
        onObjectRemoved: (index, object) => root.removeItem(object)

        delegate: FilterMenuItem {
            id: projectItem
            required property var modelData

            label: projectItem.modelData.name
            objectName: "filterProject_" + projectItem.modelData.name
            dotColor: projectItem.modelData.color
            checkable: true
            checked: root.model.projectFilterKind === "project"
                     && root.model.projectFilterID === projectItem.modelData.id
            ButtonGroup.group: projectChoice
            onTriggered: root.model.setProjectFilter("project", projectItem.modelData.id)
        }
    }

    MenuSeparator {}

    SectionHeader {
        id: priorityHeader
        text: "Priority"
    }

    Instantiator {
        model: BoardVocabulary.priorityCount
        onObjectAdded: (index, object) => root.insertAfter(priorityHeader, index, object)
        onObjectRemoved: (index, object) => root.removeItem(object)

        delegate: FilterMenuItem {
            id: priorityItem
            required property int index

            text: BoardVocabulary.priorityLabel(priorityItem.index)
            objectName: "filterPriority" + priorityItem.index
            symbol: BoardVocabulary.prioritySymbol(priorityItem.index)
            checkable: true
            checked: root.model.selectedPriorities.includes(priorityItem.index)
            onToggled: root.model.setPriorityShown(priorityItem.index, priorityItem.checked)
        }
    }

    MenuSeparator {}

    SectionHeader {
        id: tagsHeader
        text: "Tags"
    }

    Instantiator {
        model: root.model.tagList
        onObjectAdded: (index, object) => root.insertAfter(tagsHeader, index, object)
        onObjectRemoved: (index, object) => root.removeItem(object)

        delegate: FilterMenuItem {
            id: tagItem
            required property var modelData

            label: tagItem.modelData.name
            objectName: "filterTag_" + tagItem.modelData.name
            dotColor: tagItem.modelData.color
            checkable: true
            checked: root.model.selectedTagIDs.includes(tagItem.modelData.id)
            onToggled: root.model.setTagShown(tagItem.modelData.id, tagItem.checked)
        }
    }

    MenuItem {
        id: noTags
        text: "No tags yet"
        enabled: false
        visible: root.model.tagList.length === 0
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
        onObjectAdded: (index, object) => root.insertAfter(columnsHeader, index, object)
        onObjectRemoved: (index, object) => root.removeItem(object)

        delegate: FilterMenuItem {
            id: statusItem
            required property int index

            text: BoardVocabulary.statusLabel(statusItem.index)
            objectName: "filterStatus" + statusItem.index
            symbol: BoardVocabulary.statusSymbol(statusItem.index)
            checkable: true
            checked: root.model.visibleStatuses.includes(statusItem.index)
            onToggled: root.model.setStatusVisible(statusItem.index, statusItem.checked)
        }
    }

    FilterMenuItem {
        id: sortItem
        text: "Sort columns by priority"
        objectName: "filterSortByPriority"
        checkable: true
        checked: root.model.sortByPriority
        onToggled: root.model.sortByPriority = sortItem.checked
    }

    MenuSeparator {}

    MenuItem {
        // Doubled, the ampersand shows as itself rather than marking a mnemonic.
        text: "Manage Projects && Tags…"
        objectName: "filterManageTaxonomy"
        onTriggered: root.model.isManagingTaxonomy = true
    }
}
