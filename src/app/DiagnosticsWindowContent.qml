import QtQuick
import Velto

// The diagnostics window's content: the waiting panel until start-up has made the model, then the
// report. The view exists only while the window is shown, so each opening takes a new snapshot.
Item {
    id: content
    required property AppModel app
    property bool shown: true

    Loader {
        anchors.fill: parent
        sourceComponent: !content.shown ? null : content.app.diagnostics ? diagnostics : waiting
    }
    Component {
        id: diagnostics
        DiagnosticsView {
            model: content.app.diagnostics
        }
    }
    Component {
        id: waiting
        WaitingPanel {}
    }
}
