import QtQuick
import Velto

VeltoWindow {
    id: window
    required property AppModel app

    objectName: "diagnosticsWindow"
    title: "Velto Diagnostics"
    width: 760
    height: 680
    minimumWidth: 640
    minimumHeight: 520

    DiagnosticsWindowContent {
        anchors.fill: parent
        app: window.app
        shown: window.visible
    }
}
