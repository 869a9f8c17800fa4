import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The strip that shows the last failure until it is dismissed; the text can be selected and may
// run over several lines.
Rectangle {
    id: root
    required property string message
    signal dismiss()

    implicitHeight: row.implicitHeight + 2 * 9
    color: Theme.pick("#2B2418", "#F7EFDD")

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.leftMargin: 14
        anchors.rightMargin: 14
        anchors.topMargin: 9
        anchors.bottomMargin: 9
        spacing: 8

        Symbol {
            name: "exclamationmark.triangle.fill"
            size: 14
            color: Theme.pick("#E5C07B", "#7A5B12")
            Layout.alignment: Qt.AlignTop
        }
        TextEdit {
            objectName: "errorBannerText"
            text: root.message
            readOnly: true
            selectByMouse: true
            wrapMode: TextEdit.Wrap
            font.pixelSize: 12
            color: Theme.pick("#EFECE6", "#1A1917")
            Layout.fillWidth: true
        }
        Label {
            objectName: "dismissButton"
            text: "Dismiss"
            font.pixelSize: 12
            font.underline: dismissArea.containsMouse
            color: Theme.accent
            Layout.alignment: Qt.AlignTop
            Accessible.role: Accessible.Button
            Accessible.name: text
            MouseArea {
                id: dismissArea
                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
                onClicked: root.dismiss()
            }
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.pick("#4A3C22", "#EFE2C6")
    }
}
