pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// A titled group of the report's lines on a rounded panel, as a form shows them.
ColumnLayout {
    id: section
    required property string title
    property var rows: []
    default property alias extra: panel.data

    spacing: 6

    Label {
        text: section.title
        font.pixelSize: Theme.headlineSize
        font.weight: Font.DemiBold
        color: Theme.primaryText
    }
    Rectangle {
        radius: 6
        color: Theme.quaternaryFill
        implicitHeight: panel.implicitHeight + 20
        Layout.fillWidth: true

        ColumnLayout {
            id: panel
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.margins: 10
            spacing: 8

            Repeater {
                model: section.rows
                delegate: DiagnosticRowView {
                    required property var modelData
                    row: modelData
                    Layout.fillWidth: true
                }
            }
        }
    }
}
