import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// How far a card's list is, its checklist or the tasks of its working file: a bar and a count,
// green once every item is done.
Control {
    id: progress

    property int done: 0
    property int total: 0
    // What is counted, for the tooltip, and the start of the names of the bar and the count.
    property string noun: "checklist items"
    property string partName: "progress"

    readonly property real fraction: progress.total < 1 ? 0 : Math.min(1, progress.done / progress.total)
    readonly property bool isAllDone: progress.total > 0 && progress.done >= progress.total
    readonly property string helpText: progress.done + " of " + progress.total + " " + progress.noun + " done"

    hoverEnabled: true
    Accessible.name: progress.helpText

    ToolTip.text: progress.helpText
    ToolTip.visible: progress.hovered
    ToolTip.delay: 500

    contentItem: RowLayout {
        spacing: 8

        Rectangle {
            objectName: progress.partName + "Track"
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignVCenter
            implicitHeight: 4
            radius: height / 2
            color: progress.isAllDone ? Theme.pick("#26302A", "#DCE6DE") : Theme.pick("#35322B", "#EBE7DF")

            Rectangle {
                objectName: progress.partName + "Fill"
                width: parent.width * progress.fraction
                height: parent.height
                radius: height / 2
                color: progress.isAllDone ? Theme.pick("#46B584", "#1E8A5B") : Theme.pick("#7F7A70", "#B3AEA4")
            }
        }

        Text {
            objectName: progress.partName + "Count"
            text: progress.done + "/" + progress.total
            font.pixelSize: 11
            font.weight: Font.Medium
            color: progress.isAllDone ? Theme.pick("#62C89B", "#166743") : Theme.pick("#9A948A", "#726D65")
        }
    }
}
