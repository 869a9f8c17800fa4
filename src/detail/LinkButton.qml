import QtQuick
import QtQuick.Controls
import Velto

// A button drawn as a link: accent-coloured text, underlined under the pointer.
AbstractButton {
    id: link

    property int pixelSize: 11

    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    padding: 0

    contentItem: Label {
        text: link.text
        font.pixelSize: link.pixelSize
        font.underline: link.hovered || link.visualFocus
        color: link.enabled ? Theme.accent : Theme.tertiaryText
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
