pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// A card as it stands in a column: what it is, where its folder lives, how pressing it is and
// whether its folder needs repair. It draws only the face it is given and keeps no data of its own.
Item {
    id: root

    // A card face as BoardModel.cardFace gives it.
    property var face: ({})
    property bool isSelected: false
    // The timer runs on this card.
    property bool isTimerRunning: false
    // Seconds of the running session.
    property real elapsed: 0
    // Whether this card's timer can be started and stopped from its face at all.
    property bool canToggleTimer: true

    signal toggleTimer()

    readonly property bool isHovering: hover.hovered
    // An empty face, before the view hands one over, reads as a card not started, priority later.
    readonly property string title: root.face.title ?? ""
    readonly property bool isComplete: root.face.isComplete ?? false
    readonly property bool isMissing: root.face.isMissing ?? false
    // A finished card, or one whose folder is gone, steps back.
    readonly property bool isDimmed: root.isComplete || root.isMissing
    readonly property int status: root.face.status ?? 0
    readonly property int priority: root.face.priority ?? 4
    readonly property bool hasProject: (root.face.projectID ?? "") !== ""
    readonly property var tags: root.face.tags ?? []
    readonly property var repair: root.repairFor(root.face)
    readonly property color borderColor: {
        if (root.isDimmed)
            return Theme.pick("#302E29", "#E1E5DF")
        if (deadlineChip.isOverdue)
            return Theme.pick("#4E2F2A", "#F0D3CF")
        if (root.isTimerRunning)
            return Theme.pick("#4A3C22", "#EBDDC2")
        return Theme.pick("#383530", "#E6E3DD")
    }

    // What is wrong with the folder, if anything: a missing folder outranks a verdict of no access,
    // which would only repeat the same trouble in weaker words.
    function repairFor(face) {
        const failure = face.failure ?? ""
        if (face.isMissing)
            return {
                symbol: "questionmark.folder",
                label: "Folder missing",
                help: failure !== "" ? failure : "The folder could not be found."
            }
        if (face.availability === "unreachable")
            return {
                symbol: "lock.slash",
                label: "No access",
                help: (failure !== "" ? failure : "Velto cannot read this folder right now.")
                      + " Choose Locate… to pick it again and restore access."
            }
        return null
    }

    implicitWidth: 260
    implicitHeight: content.implicitHeight + content.anchors.topMargin + 10

    HoverHandler {
        id: hover
    }

    // A soft shadow one point below the card; a plain offset shape reads the same as a blurred one
    // at this size and costs nothing per card.
    Rectangle {
        objectName: "cardShadow"
        x: 0
        y: 1
        width: parent.width
        height: parent.height
        radius: 8
        color: "black"
        opacity: root.isDimmed ? 0.03 : 0.06
    }

    Rectangle {
        objectName: "cardSurface"
        anchors.fill: parent
        radius: 8
        color: root.isDimmed ? Theme.pick("#211F1B", "#FBFAF8") : Theme.pick("#26241F", "#FFFFFF")
    }

    // The status stripe: a narrow window onto a rounded card-sized shape, so the stripe follows
    // the card's rounded corners.
    Item {
        width: 3
        height: parent.height
        clip: true

        Rectangle {
            objectName: "statusStripe"
            width: root.width
            height: root.height
            radius: 8
            color: BoardVocabulary.accentColor(root.status, Theme.dark)
        }
    }

    Rectangle {
        objectName: "cardBorder"
        anchors.fill: parent
        radius: 8
        color: "transparent"
        border.width: 1
        border.color: root.borderColor
    }

    Rectangle {
        objectName: "selectionBorder"
        anchors.fill: parent
        radius: 8
        color: "transparent"
        border.width: 2
        border.color: root.isSelected ? Theme.accent : "transparent"
    }

    Column {
        id: content

        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
            leftMargin: 12
            rightMargin: 11
            topMargin: 10
        }
        spacing: 6

        RowLayout {
            width: parent.width
            spacing: 7

            Text {
                objectName: "cardTitle"
                Layout.fillWidth: true
                Layout.maximumWidth: Math.ceil(implicitWidth)
                Layout.alignment: Qt.AlignTop
                text: root.title
                wrapMode: Text.Wrap
                font.pointSize: 13.5 * 0.75
                font.weight: Font.DemiBold
                color: root.isDimmed ? Theme.pick("#B2ACA2", "#6B675F") : Theme.pick("#EFECE6", "#1A1917")
            }

            PriorityMark {
                objectName: "priorityMark"
                Layout.alignment: Qt.AlignTop
                priority: root.priority
            }

            Item {
                Layout.fillWidth: true
            }

            // Keeps its place while hidden, so that the title does not rewrap as the pointer comes
            // and goes.
            AbstractButton {
                id: playButton

                readonly property string helpText: "Start tracking time on this card"
                readonly property bool isShown: root.isHovering || playButton.activeFocus

                objectName: "playButton"
                Layout.alignment: Qt.AlignTop
                visible: root.canToggleTimer && !root.isTimerRunning
                opacity: playButton.isShown ? 1 : 0
                hoverEnabled: true
                activeFocusOnTab: true
                Accessible.name: playButton.helpText
                ToolTip.text: playButton.helpText
                ToolTip.visible: playButton.hovered
                ToolTip.delay: 500
                onClicked: root.toggleTimer()

                contentItem: Symbol {
                    name: "play.circle"
                    size: 14
                    color: Theme.pick("#9A948A", "#726D65")
                }
            }
        }

        // The names keep their natural width, rounded up because a layout hands out whole pixels
        // and would otherwise elide a name that fits; the short path takes the rest.
        RowLayout {
            id: pathLine

            readonly property string helpText: root.face.displayPath ?? ""
            readonly property color tint: Theme.pick("#9A948A", "#726D65")
            readonly property color separatorTint: Theme.pick("#4E4A42", "#B4AFA5")

            objectName: "pathLine"
            width: parent.width
            spacing: 6

            ToolTip.text: pathLine.helpText
            ToolTip.visible: pathHover.hovered
            ToolTip.delay: 500

            HoverHandler {
                id: pathHover
            }

            Text {
                objectName: "pathName"
                visible: root.face.hasCustomTitle ?? false
                Layout.fillWidth: true
                Layout.maximumWidth: Math.ceil(implicitWidth)
                text: root.face.displayName ?? ""
                elide: Text.ElideRight
                font.pixelSize: 11
                color: pathLine.tint
            }

            Text {
                visible: root.face.hasCustomTitle ?? false
                text: "/"
                font.pixelSize: 11
                color: pathLine.separatorTint
            }

            ProjectDot {
                objectName: "pathProjectDot"
                visible: root.hasProject
                Layout.alignment: Qt.AlignVCenter
                color: root.face.projectColor ?? ""
            }

            Text {
                objectName: "pathProjectName"
                visible: root.hasProject
                Layout.fillWidth: true
                Layout.maximumWidth: Math.ceil(implicitWidth)
                text: root.face.projectName ?? ""
                elide: Text.ElideRight
                font.pixelSize: 11
                color: pathLine.tint
            }

            Text {
                visible: root.hasProject
                text: "/"
                font.pixelSize: 11
                color: pathLine.separatorTint
            }

            Text {
                objectName: "shortPath"
                Layout.fillWidth: true
                text: CardText.shortPath(root.face.displayPath ?? "")
                elide: Text.ElideMiddle
                font.pixelSize: 11
                color: pathLine.tint
            }
        }

        RunningSession {
            objectName: "runningSession"
            width: parent.width
            visible: root.isTimerRunning && root.canToggleTimer
            elapsed: root.elapsed
            onStop: root.toggleTimer()
        }

        DeadlineChip {
            id: deadlineChip

            objectName: "deadlineChip"
            deadline: root.face.deadline
            isComplete: root.isComplete
        }

        FlowLayout {
            id: tagFlow
            objectName: "tagChips"
            width: parent.width
            visible: root.tags.length > 0
            spacing: 5

            Repeater {
                model: root.tags

                TagChip {
                    required property var modelData

                    objectName: "tagChip"
                    name: modelData.name
                    color: modelData.color
                    maximumWidth: tagFlow.width
                }
            }
        }

        // The checklist and the tasks of the folder's velto.md side by side; either alone takes the
        // whole width.
        RowLayout {
            width: parent.width
            // From the counts: a child's own visibility would follow this row's.
            visible: progressRow.total >= 1 || workingProgressRow.total >= 1
            spacing: 12

            ProgressRow {
                id: progressRow

                objectName: "progressRow"
                visible: progressRow.total >= 1
                done: root.face.progressDone ?? 0
                total: root.face.progressTotal ?? 0
                Layout.fillWidth: true
            }

            ProgressRow {
                id: workingProgressRow

                objectName: "workingProgressRow"
                visible: workingProgressRow.total >= 1
                done: root.face.workingDone ?? 0
                total: root.face.workingTotal ?? 0
                noun: "tasks in velto.md"
                partName: "workingProgress"
                Layout.fillWidth: true
            }
        }

        RepairChip {
            objectName: "repairChip"
            visible: root.repair !== null
            symbol: root.repair?.symbol ?? ""
            label: root.repair?.label ?? ""
            help: root.repair?.help ?? ""
        }
    }
}
