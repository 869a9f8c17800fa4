import QtQuick
import QtQuick.Controls
import Velto

ApplicationWindow {
    id: window
    required property AppModel app

    title: "Velto"
    width: 1180
    height: 760
    minimumWidth: 900
    minimumHeight: 460
    visible: true
    color: Theme.windowBackground

    RootView {
        anchors.fill: parent
        app: window.app
    }
}
