import QtQuick
import QtQuick.Controls
import Velto

// Starts the timer on a card, or stops it when it runs there. Whether it runs is read again when
// clicked, so the click does what the state is at that moment.
Button {
    id: button

    required property BoardModel board
    required property TimerModel timer
    required property string cardID

    readonly property bool runsHere: button.timer.hasRunningSession && button.timer.runningCardID === button.cardID

    objectName: "timerButton"
    text: button.runsHere ? "Stop" : "Start"
    icon.source: "qrc:/qt/qml/Velto/app/symbols/" + (button.runsHere ? "stop.fill" : "play.fill") + ".svg"
    icon.width: 12
    icon.height: 12
    hoverEnabled: true
    ToolTip.text: button.runsHere ? "Stop tracking time on this card"
                                  : "Start tracking time on this card. Any other running timer stops."
    ToolTip.visible: button.hovered
    ToolTip.delay: 600
    onClicked: button.board.requestToggleTimer(button.cardID)
}
