import QtQuick
import QtQuick.Layouts
import Velto

// The hairline between two blocks of the detail pane.
Rectangle {
    Layout.fillWidth: true
    implicitHeight: 1
    color: Theme.separator
}
