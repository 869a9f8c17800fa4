import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// Stands in a window whose model start-up has not made yet; the window's content takes its place
// as soon as the model appears.
Item {
    objectName: "waitingPanel"

    ColumnLayout {
        anchors.centerIn: parent
        spacing: 8

        Symbol {
            name: "hourglass"
            size: 28
            color: Theme.secondaryText
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            text: "Not available yet"
            font.pixelSize: Theme.titleSize
            font.bold: true
            color: Theme.primaryText
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            text: "Velto is still starting up."
            color: Theme.secondaryText
            font.pixelSize: Theme.bodySize
            Layout.alignment: Qt.AlignHCenter
        }
    }
}
