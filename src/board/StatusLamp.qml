import QtQuick
import QtQuick.Controls
import Velto

// A status as a small mark in its accent colour: a ring while not started, a dot with a halo while
// in progress, a plain dot otherwise. Statuses travel as their index: 0 is not started, 1 in progress.
Item {
    id: lamp

    property int status: 0

    readonly property color accent: BoardVocabulary.accentColor(lamp.status, Theme.dark)
    readonly property string helpText: BoardVocabulary.statusLabel(lamp.status)

    implicitWidth: 8
    implicitHeight: 8

    ToolTip.text: lamp.helpText
    ToolTip.visible: hover.hovered
    ToolTip.delay: 500

    HoverHandler {
        id: hover
    }

    // The halo reaches past the lamp's own square, so neighbours keep their distance to the dot.
    Rectangle {
        visible: lamp.status === 1
        anchors.centerIn: parent
        width: 14
        height: 14
        radius: width / 2
        color: lamp.accent
        opacity: 0.22
    }

    Rectangle {
        anchors.fill: parent
        radius: width / 2
        color: lamp.status === 0 ? "transparent" : lamp.accent
        border.width: lamp.status === 0 ? 2 : 0
        border.color: lamp.accent
    }
}
