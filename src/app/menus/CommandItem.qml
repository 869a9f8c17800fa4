import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A menu entry with its keyboard shortcut at the right end, as desktop menus show them.
MenuItem {
    id: item
    readonly property string keys: item.action && item.action.shortcut ? String(item.action.shortcut) : ""

    contentItem: RowLayout {
        spacing: 24
        Label {
            text: item.text
            color: item.highlighted ? item.palette.highlightedText : item.palette.windowText
            opacity: item.enabled ? 1 : 0.45
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
        Label {
            visible: item.keys !== ""
            text: item.keys
            color: item.highlighted ? item.palette.highlightedText : item.palette.windowText
            opacity: item.enabled ? 0.7 : 0.35
        }
    }
}
