pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// What the agent keeps in velto.md at the root of the card's folder, read back: its tasks, ticked
// or not, and the newest entries of its log. Read-only; Open hands the file to the user's editor.
ColumnLayout {
    id: section

    // The card's `workingFile` as BoardModel.cardDetail gives it.
    required property var workingFile

    readonly property bool exists: section.workingFile?.exists ?? false
    readonly property string failure: section.workingFile?.failure ?? ""
    readonly property var tasks: section.workingFile?.tasks ?? []
    readonly property var log: section.workingFile?.log ?? []
    readonly property int doneCount: section.tasks.filter(task => task.done).length

    objectName: "workingFileSection"
    spacing: 8

    RowLayout {
        Layout.fillWidth: true
        Label {
            text: "Working file"
            font.pixelSize: 13
            font.weight: Font.DemiBold
            color: Theme.primaryText
            Layout.fillWidth: true
        }
        Label {
            objectName: "workingFileProgress"
            visible: section.tasks.length > 0
            text: section.doneCount + "/" + section.tasks.length
            font.pixelSize: 12
            color: Theme.secondaryText
        }
        LinkButton {
            objectName: "openWorkingFileButton"
            visible: section.exists
            text: "Open"
            onClicked: Qt.openUrlExternally(section.workingFile.url)
        }
    }

    Label {
        objectName: "workingFileNote"
        visible: !section.exists || section.failure !== ""
                 || (section.tasks.length === 0 && section.log.length === 0)
        text: {
            if (!section.exists)
                return "No velto.md in this folder yet. The briefing asks the agent to create one."
            if (section.failure !== "")
                return section.failure
            return "velto.md has no tasks or log entries yet."
        }
        font.pixelSize: 12
        color: Theme.tertiaryText
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }

    Column {
        id: taskList
        objectName: "workingFileTasks"
        visible: section.tasks.length > 0
        spacing: 4
        Layout.fillWidth: true

        Repeater {
            model: section.tasks
            RowLayout {
                id: taskRow
                required property var modelData
                objectName: "workingFileTask"
                width: taskList.width
                spacing: 6
                Label {
                    text: taskRow.modelData.done ? "☑" : "☐"
                    font.pixelSize: 12
                    color: Theme.secondaryText
                    Accessible.ignored: true
                }
                Label {
                    objectName: "workingFileTaskText"
                    text: taskRow.modelData.text
                    font.pixelSize: 12
                    font.strikeout: taskRow.modelData.done
                    color: taskRow.modelData.done ? Theme.tertiaryText : Theme.primaryText
                    wrapMode: Text.Wrap
                    textFormat: Text.PlainText
                    Accessible.name: (taskRow.modelData.done ? "Done: " : "Not done: ") + taskRow.modelData.text
                    Layout.fillWidth: true
                }
            }
        }
    }

    Label {
        visible: section.log.length > 0
        text: "Log"
        font.pixelSize: 12
        font.weight: Font.DemiBold
        color: Theme.secondaryText
    }

    Column {
        id: logList
        objectName: "workingFileLog"
        visible: section.log.length > 0
        spacing: 4
        Layout.fillWidth: true

        Repeater {
            model: section.log
            RowLayout {
                id: logRow
                required property var modelData
                objectName: "workingFileLogEntry"
                width: logList.width
                spacing: 8
                Label {
                    text: logRow.modelData.date
                    font.pixelSize: 11
                    font.family: "monospace"
                    color: Theme.tertiaryText
                    Layout.alignment: Qt.AlignTop
                }
                Label {
                    objectName: "workingFileLogText"
                    text: logRow.modelData.text
                    font.pixelSize: 12
                    color: Theme.primaryText
                    wrapMode: Text.Wrap
                    textFormat: Text.PlainText
                    Layout.fillWidth: true
                }
            }
        }
    }
}
