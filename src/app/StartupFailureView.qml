import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// Shown when start-up gave up: what went wrong, in words that can be selected and copied, and a
// way to try again once the cause is fixed.
Item {
    id: view
    required property string message
    signal retry()

    ColumnLayout {
        anchors.centerIn: parent
        width: Math.min(parent.width - 80, 640)
        spacing: Theme.spacing

        Symbol {
            name: "exclamationmark.triangle"
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            text: "Velto could not start"
            font.pixelSize: Theme.titleSize
            font.bold: true
            color: Theme.primaryText
            Layout.alignment: Qt.AlignHCenter
        }
        TextEdit {
            objectName: "startupFailureMessage"
            text: view.message
            readOnly: true
            selectByMouse: true
            selectByKeyboard: true
            wrapMode: TextEdit.Wrap
            horizontalAlignment: TextEdit.AlignHCenter
            color: Theme.secondaryText
            font.pixelSize: Theme.bodySize
            Layout.fillWidth: true
        }
        Button {
            objectName: "tryAgainButton"
            text: "Try again"
            Layout.alignment: Qt.AlignHCenter
            onClicked: view.retry()
        }
    }
}
