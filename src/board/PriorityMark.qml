import QtQuick
import QtQuick.Controls
import Velto

// How soon a card is meant to be done, beside its title: a red-orange "NOW" pill for the most
// pressing priority, a small grey symbol for the middle ones, nothing for "later". Priorities travel
// as their index in declaration order: 0 is now, 4 is later.
Item {
    id: mark

    property int priority: 4

    readonly property bool isPill: mark.priority === 0
    readonly property bool hasMark: mark.priority >= 0 && mark.priority < 4
    readonly property string symbolName: BoardVocabulary.prioritySymbol(mark.priority)
    readonly property string helpText: mark.hasMark ? "Priority: " + BoardVocabulary.priorityLabel(mark.priority) : ""

    visible: mark.hasMark
    implicitWidth: mark.isPill ? pill.implicitWidth : symbol.implicitWidth
    implicitHeight: mark.isPill ? pill.implicitHeight : symbol.y + symbol.implicitHeight

    ToolTip.text: mark.helpText
    ToolTip.visible: hover.hovered
    ToolTip.delay: 500

    HoverHandler {
        id: hover
    }

    Control {
        id: pill

        readonly property color tint: Theme.pick("#F2A06B", "#B0400C")

        objectName: "priorityPill"
        visible: mark.isPill
        leftPadding: 5
        rightPadding: 5
        topPadding: 2
        bottomPadding: 2

        background: Rectangle {
            radius: 4
            color: Theme.pick("#3B2419", "#FBEADF")
        }

        contentItem: Row {
            spacing: 3

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: mark.symbolName
                size: 8
                color: pill.tint
            }

            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: "NOW"
                font.pixelSize: 10
                font.weight: Font.DemiBold
                font.letterSpacing: 0.4
                color: pill.tint
            }
        }
    }

    Symbol {
        id: symbol

        objectName: "prioritySymbol"
        visible: !mark.isPill
        y: 2
        name: mark.symbolName
        size: 10
        color: Theme.pick("#9A948A", "#726D65")
    }
}
