import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The session that runs on a card: how long it has run, and a button that stops it.
Control {
    id: session

    // Seconds since the session started.
    property real elapsed: 0

    readonly property string stopHelp: "Stop tracking time on this card"

    signal stop()

    leftPadding: 7
    rightPadding: 7
    topPadding: 5
    bottomPadding: 5

    background: Rectangle {
        radius: 6
        color: Theme.pick("#2B2418", "#FDF4E4")
        border.width: 1
        border.color: Theme.pick("#4A3C22", "#F0E1C4")
    }

    contentItem: RowLayout {
        spacing: 6

        // Qt 6.4 cannot ask a font for digits of one width, so the text relies on the interface
        // font drawing them so, as the common ones do; otherwise it would jitter each second.
        Text {
            objectName: "runningSessionText"
            Layout.fillWidth: true
            text: "Tracking · " + SessionTimeText.clock(session.elapsed)
            elide: Text.ElideRight
            font.pointSize: 11.5 * 0.75
            font.weight: Font.DemiBold
            color: Theme.pick("#E8B860", "#8A5A08")
        }

        AbstractButton {
            objectName: "stopButton"
            Layout.alignment: Qt.AlignVCenter
            hoverEnabled: true
            activeFocusOnTab: true
            Accessible.name: session.stopHelp
            ToolTip.text: session.stopHelp
            ToolTip.visible: hovered
            ToolTip.delay: 500
            onClicked: session.stop()

            contentItem: Symbol {
                name: "stop.circle"
                size: 12
                color: Theme.pick("#D9503F", "#C0392B")
            }
        }
    }
}
