import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The analytics window's page: what has waited too long, hours per project, completions and the
// totals. Made each time the window opens, and loading then: an open window does not follow
// later changes.
ScrollView {
    id: view
    required property AnalyticsModel model

    objectName: "analyticsView"
    implicitWidth: 620
    implicitHeight: 560
    contentWidth: availableWidth
    clip: true

    Component.onCompleted: view.model.requestReload()

    ColumnLayout {
        width: view.availableWidth
        spacing: 0

        ErrorBanner {
            objectName: "analyticsErrorBanner"
            visible: view.model.errorMessage !== ""
            message: view.model.errorMessage
            onDismiss: view.model.clearError()
            Layout.fillWidth: true
        }

        ColumnLayout {
            spacing: 24
            Layout.fillWidth: true
            Layout.margins: 18

            StuckSection {
                model: view.model
                Layout.fillWidth: true
            }
            AnalyticsSeparator {}
            WeeklyHoursSection {
                model: view.model
                Layout.fillWidth: true
            }
            AnalyticsSeparator {}
            CompletionsSection {
                model: view.model
                Layout.fillWidth: true
            }
            AnalyticsSeparator {}
            ProjectTotalsSection {
                model: view.model
                Layout.fillWidth: true
            }
        }
    }
}
