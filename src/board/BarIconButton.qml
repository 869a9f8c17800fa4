import QtQuick
import QtQuick.Controls
import Velto

// A small button of the bar above the board that shows only a symbol, with its help on hover.
AbstractButton {
    id: button
    required property string symbol
    required property string help

    hoverEnabled: true
    padding: 5

    ToolTip.visible: button.hovered
    ToolTip.text: button.help

    contentItem: Symbol {
        name: button.symbol
        size: 12
        color: Theme.secondaryText
    }

    background: Rectangle {
        radius: 6
        color: button.down ? Theme.secondaryFill : "transparent"
        border.width: button.visualFocus ? 1 : 0
        border.color: Theme.accent
    }
}
