pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The small window that stays above everything while a focus session runs - its clock, how far
// it is towards its target, and a stop button - and asks afterwards how the session went. The
// card's name shows only where the settings allow it, so a screen share shows nothing private.
Window {
    id: panel

    // Both absent until start-up has built the models.
    required property TimerModel timer
    required property FocusSettings settings

    readonly property int kind: panel.timer ? panel.timer.presentationKind : TimerModel.Hidden
    readonly property real target: panel.timer ? panel.timer.presentedTargetSeconds : 0
    readonly property real elapsed: panel.timer ? panel.timer.elapsed : 0
    readonly property bool showsName: panel.settings !== null && panel.settings.showsCardNameInFocusPanel

    objectName: "focusPanel"
    title: "Focus"
    flags: Qt.Tool | Qt.WindowStaysOnTopHint
    // Its own window, not the main one's: it stays up while the board is minimised.
    transientParent: null
    visible: panel.kind !== TimerModel.Hidden
    width: 300
    height: content.implicitHeight + 2 * Theme.spacing
    minimumWidth: 260
    color: Theme.windowBackground

    ColumnLayout {
        id: content
        anchors.fill: parent
        anchors.margins: Theme.spacing
        spacing: 8

        // While the session runs.
        Label {
            objectName: "focusCardName"
            visible: panel.kind === TimerModel.Running && panel.showsName
            text: panel.showsName && panel.timer ? panel.timer.runningCardName : ""
            elide: Text.ElideRight
            font.pixelSize: Theme.bodySize
            font.bold: true
            color: Theme.primaryText
            Layout.fillWidth: true
        }
        Label {
            objectName: "focusClock"
            visible: panel.kind === TimerModel.Running
            text: SessionTimeText.clock(panel.elapsed)
            font.pixelSize: 32
            color: Theme.primaryText
            Layout.alignment: Qt.AlignHCenter
        }
        ProgressBar {
            objectName: "focusProgress"
            visible: panel.kind === TimerModel.Running && panel.target > 0
            from: 0
            to: 1
            value: panel.target > 0 ? Math.min(1, panel.elapsed / panel.target) : 0
            Layout.fillWidth: true
        }
        Label {
            objectName: "focusTarget"
            visible: panel.kind === TimerModel.Running && panel.target > 0
            text: panel.elapsed >= panel.target ? "Target of " + SessionTimeText.duration(panel.target) + " reached"
                                                : Math.floor(100 * panel.elapsed / Math.max(1, panel.target)) + "% of "
                                                  + SessionTimeText.duration(panel.target)
            font.pixelSize: 12
            color: Theme.secondaryText
            Layout.alignment: Qt.AlignHCenter
        }
        Button {
            objectName: "focusStopButton"
            visible: panel.kind === TimerModel.Running
            text: "Stop"
            icon.source: "qrc:/qt/qml/Velto/app/symbols/stop.fill.svg"
            icon.width: 12
            icon.height: 12
            Layout.alignment: Qt.AlignHCenter
            onClicked: panel.timer.requestStop(true)
        }

        // Once it has ended: how it went.
        Label {
            objectName: "focusRatingTitle"
            visible: panel.kind === TimerModel.Rating
            text: "How did this session go?"
            font.pixelSize: Theme.bodySize
            font.bold: true
            color: Theme.primaryText
        }
        RowLayout {
            visible: panel.kind === TimerModel.Rating
            spacing: 4
            Symbol {
                name: panel.timer && panel.timer.presentedMetTarget ? "checkmark.circle.fill" : "hourglass"
                size: 12
                color: panel.timer && panel.timer.presentedMetTarget ? Theme.accent : Theme.secondaryText
            }
            Label {
                objectName: "focusTargetVerdict"
                text: {
                    if (!panel.timer)
                        return ""
                    const length = SessionTimeText.duration(panel.timer.presentedLengthSeconds)
                    if (panel.target <= 0)
                        return length
                    return length + (panel.timer.presentedMetTarget ? ", met its target of " : ", short of its target of ")
                           + SessionTimeText.duration(panel.target)
                }
                font.pixelSize: 12
                color: Theme.secondaryText
            }
        }
        GridLayout {
            visible: panel.kind === TimerModel.Rating
            columns: 3
            columnSpacing: 6
            rowSpacing: 6
            Layout.fillWidth: true
            Repeater {
                model: panel.timer ? panel.timer.moods : []
                delegate: Button {
                    id: moodButton
                    required property var modelData
                    objectName: "moodButton_" + moodButton.modelData.raw
                    text: moodButton.modelData.label
                    icon.source: "qrc:/qt/qml/Velto/app/symbols/" + moodButton.modelData.symbol + ".svg"
                    icon.width: 14
                    icon.height: 14
                    Layout.fillWidth: true
                    onClicked: panel.timer.requestRate(panel.timer.presentedSessionID, moodButton.modelData.raw)
                }
            }
            Button {
                objectName: "skipRatingButton"
                text: "Skip"
                flat: true
                Layout.fillWidth: true
                onClicked: panel.timer.requestRate(panel.timer.presentedSessionID, "")
            }
        }
        Label {
            objectName: "focusError"
            visible: text !== "" && panel.kind !== TimerModel.Hidden
            text: panel.timer ? panel.timer.errorMessage : ""
            wrapMode: Text.Wrap
            font.pixelSize: 11
            color: Theme.red
            Layout.fillWidth: true
        }
    }
}
