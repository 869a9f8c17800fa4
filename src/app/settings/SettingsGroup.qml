import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// One titled group of the settings form: a heading over a rounded box of rows.
ColumnLayout {
    id: group
    property string title
    default property alias rows: box.data

    spacing: 6
    Layout.fillWidth: true

    Label {
        text: group.title
        font.pixelSize: Theme.bodySize
        font.bold: true
        color: Theme.primaryText
    }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: box.implicitHeight + 24
        radius: 8
        color: Theme.quaternaryFill
        border.color: Theme.separator
        ColumnLayout {
            id: box
            anchors.fill: parent
            anchors.margins: 12
            spacing: 12
        }
    }
}
