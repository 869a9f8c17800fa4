import QtQuick
import QtQuick.Controls
import Velto

// One line of the report: the caption on the left; the verdict's mark and the value on the right,
// and below them, when there is one, the line that explains. Placed by anchors rather than
// layouts, so that a long value wrapping to a second line settles in one pass.
Item {
    id: line
    required property var row

    implicitHeight: Math.max(caption.implicitHeight, value.height) + (detail.visible ? detail.height + 2 : 0)

    Label {
        id: caption
        anchors.left: parent.left
        anchors.top: parent.top
        text: line.row.label
        color: Theme.primaryText
        font.pixelSize: Theme.bodySize
    }
    TextEdit {
        id: value
        objectName: "rowValue_" + line.row.label
        anchors.right: parent.right
        anchors.top: parent.top
        width: Math.min(implicitWidth, line.width - caption.implicitWidth - mark.width - 24)
        text: line.row.value
        readOnly: true
        selectByMouse: true
        wrapMode: TextEdit.WrapAnywhere
        horizontalAlignment: TextEdit.AlignRight
        color: Theme.primaryText
        font.family: line.row.monospaced ? "monospace" : Qt.application.font.family
        font.pixelSize: line.row.monospaced ? Theme.calloutSize : Theme.bodySize
    }
    Symbol {
        id: mark
        objectName: "signalSymbol"
        visible: line.row.symbol !== ""
        width: visible ? 13 : 0
        anchors.right: value.left
        anchors.rightMargin: visible ? 6 : 0
        anchors.top: parent.top
        anchors.topMargin: 2
        name: line.row.symbol
        size: 13
        color: line.row.signal === "ok" ? Theme.green
             : line.row.signal === "warning" ? Theme.orange : Theme.red
    }
    Label {
        id: detail
        anchors.right: parent.right
        anchors.top: value.bottom
        anchors.topMargin: 2
        width: Math.min(implicitWidth, line.width)
        visible: line.row.detail !== ""
        text: line.row.detail
        color: Theme.secondaryText
        font.pixelSize: Theme.captionSize
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignRight
    }
}
