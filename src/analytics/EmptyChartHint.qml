import QtQuick
import QtQuick.Controls
import Velto

// Stands where a chart would be while there is nothing to draw.
Rectangle {
    id: hint
    required property string message

    implicitHeight: 120
    radius: 6
    color: Theme.quaternaryFill

    Label {
        anchors.centerIn: parent
        width: parent.width - 24
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        text: hint.message
        color: Theme.secondaryText
        font.pixelSize: Theme.bodySize
    }
}
