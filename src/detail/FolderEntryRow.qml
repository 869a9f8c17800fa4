pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// One item at the top of the card's folder. A file not yet on the checklist offers "Add" under the
// pointer, and a click anywhere on the row adds it; a folder is only shown.
Control {
    id: row

    required property CardDetailModel detail
    required property string name
    required property url url
    required property bool isDirectory
    required property bool isOnChecklist

    readonly property bool canPromote: !row.isDirectory && !row.isOnChecklist

    objectName: "folderEntryRow"
    hoverEnabled: true
    leftPadding: 6
    rightPadding: 6
    topPadding: 2
    bottomPadding: 2

    contentItem: RowLayout {
        spacing: 7

        Symbol {
            name: row.isDirectory ? "folder" : "doc"
            size: 13
            color: Theme.secondaryText
        }
        Label {
            text: row.name
            font.pixelSize: 13
            color: Theme.primaryText
            elide: Text.ElideMiddle
            Layout.fillWidth: true
        }
        Symbol {
            objectName: "onChecklistMark"
            visible: !row.isDirectory && row.isOnChecklist
            name: "checkmark"
            size: 10
            color: Theme.secondaryText
            HoverHandler {
                id: markHover
            }
            ToolTip.text: "Already on the checklist"
            ToolTip.visible: markHover.hovered
            ToolTip.delay: 500
        }
        LinkButton {
            objectName: "addEntryLink"
            visible: row.canPromote && row.hovered
            text: "Add"
            onClicked: row.detail.requestPromote(row.url)
        }
    }

    TapHandler {
        enabled: row.canPromote
        onTapped: row.detail.requestPromote(row.url)
    }
}
