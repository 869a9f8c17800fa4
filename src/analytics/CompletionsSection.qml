import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtCharts
import Velto

// Cards completed in each of the last eight weeks; eight empty bars say that none were.
ColumnLayout {
    id: section
    required property AnalyticsModel model

    readonly property var counts: section.model.completions.map(row => row.count)

    spacing: 10

    SectionHeading {
        title: "Cards completed"
        subtitle: "Last eight weeks, by the week each card last moved into Complete."
        Layout.fillWidth: true
    }
    ChartView {
        objectName: "completionsChart"
        antialiasing: true
        backgroundColor: "transparent"
        backgroundRoundness: 0
        legend.visible: false
        margins.left: 0
        margins.right: 0
        margins.top: 0
        margins.bottom: 0
        Layout.fillWidth: true
        Layout.preferredHeight: 160

        BarSeries {
            barWidth: 0.6
            axisX: BarCategoryAxis {
                categories: section.model.weekLabels
                labelsColor: Theme.secondaryText
                gridVisible: false
                lineVisible: false
            }
            axisY: ValueAxis {
                min: 0
                // Whole cards on about four ticks.
                max: Math.max(4, Math.ceil(Math.max(0, ...section.counts) / 4) * 4)
                tickCount: 5
                labelFormat: "%d"
                labelsColor: Theme.secondaryText
                gridLineColor: Theme.separator
                lineVisible: false
            }
            BarSet {
                objectName: "completionsBars"
                label: "Cards"
                values: section.counts
                color: Theme.accent
                borderColor: Theme.accent
            }
        }
    }
}
