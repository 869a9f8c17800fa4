import QtQuick
import Velto

// The analytics window's content: the waiting panel until start-up has made the model, then the
// view. The view exists only while the window is shown, so each opening loads anew.
Item {
    id: content
    required property AppModel app
    property bool shown: true

    Loader {
        anchors.fill: parent
        sourceComponent: !content.shown ? null : content.app.analytics ? analytics : waiting
    }
    Component {
        id: analytics
        AnalyticsView {
            model: content.app.analytics
        }
    }
    Component {
        id: waiting
        WaitingPanel {}
    }
}
