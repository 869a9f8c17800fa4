import QtQuick
import QtQuick.Layouts
import Velto

// A hairline across the page between sections and rows.
Rectangle {
    color: Theme.separator
    implicitHeight: 1
    Layout.fillWidth: true
}
