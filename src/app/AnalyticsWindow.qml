import QtQuick
import Velto

VeltoWindow {
    id: window
    required property AppModel app

    objectName: "analyticsWindow"
    title: "Analytics"
    width: 720
    height: 720
    minimumWidth: 620
    minimumHeight: 560

    AnalyticsWindowContent {
        anchors.fill: parent
        app: window.app
        shown: window.visible
    }
}
