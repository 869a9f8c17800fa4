import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtCharts
import Velto

// Hours per project in each of the last eight weeks, stacked in the order of the series.
ColumnLayout {
    id: section
    required property AnalyticsModel model

    spacing: 10

    SectionHeading {
        title: "Hours per project"
        subtitle: "Last eight weeks. Sessions spanning a week boundary are split between the weeks."
        Layout.fillWidth: true
    }
    EmptyChartHint {
        objectName: "noTimeHint"
        visible: !section.model.hasAnyTrackedTime
        message: "No time has been tracked yet. Start a timer on a card and this fills in."
        Layout.fillWidth: true
    }
    Loader {
        active: section.model.hasAnyTrackedTime
        visible: active
        Layout.fillWidth: true
        Layout.preferredHeight: 220
        sourceComponent: ChartView {
            id: chart
            objectName: "hoursChart"
            antialiasing: true
            backgroundColor: "transparent"
            backgroundRoundness: 0
            legend.visible: section.model.seriesNames.length > 1
            legend.alignment: Qt.AlignBottom
            legend.labelColor: Theme.primaryText
            margins.left: 0
            margins.right: 0
            margins.top: 0
            margins.bottom: 0

            // The colour of a series as drawn now: its stored colour, the palette's partner in the
            // dark, the secondary colour for a text that is no colour.
            function colorOf(name) {
                const stored = section.model.seriesColors[name]
                const resolved = PaletteColors.resolve(stored === undefined ? "#8E8E93" : stored, Theme.dark)
                return resolved.valid ? resolved : Theme.secondaryText
            }

            // Bar sets are made anew from the rows; each series gets a value for all eight weeks.
            function rebuild() {
                bars.clear()
                const labels = section.model.weekLabels
                const rows = section.model.weeklyRows
                const totals = labels.map(() => 0)
                for (const name of section.model.seriesNames) {
                    const values = labels.map(() => 0)
                    for (const row of rows) {
                        const week = labels.indexOf(row.weekLabel)
                        if (row.seriesName === name && week >= 0) {
                            values[week] = row.hours
                            totals[week] += row.hours
                        }
                    }
                    const set = bars.append(name, values)
                    set.color = colorOf(name)
                    set.borderColor = set.color
                }
                hours.max = Math.max(1, ...totals)
                hours.applyNiceNumbers()
            }

            function recolor() {
                for (let i = 0; i < bars.count; ++i) {
                    const set = bars.at(i)
                    set.color = colorOf(set.label)
                    set.borderColor = set.color
                }
            }

            StackedBarSeries {
                id: bars
                barWidth: 0.6
                axisX: BarCategoryAxis {
                    categories: section.model.weekLabels
                    labelsColor: Theme.secondaryText
                    gridVisible: false
                    lineVisible: false
                }
                axisY: ValueAxis {
                    id: hours
                    min: 0
                    titleText: "Hours"
                    titleBrush: Theme.secondaryText
                    labelsColor: Theme.secondaryText
                    labelFormat: "%.0f"
                    gridLineColor: Theme.separator
                    lineVisible: false
                }
            }

            Component.onCompleted: rebuild()

            Connections {
                target: section.model
                function onWeeklyRowsChanged() { chart.rebuild() }
                function onSeriesNamesChanged() { chart.rebuild() }
                function onWeekLabelsChanged() { chart.rebuild() }
                function onSeriesColorsChanged() { chart.recolor() }
            }
            Connections {
                target: Theme
                function onDarkChanged() { chart.recolor() }
            }
        }
    }
}
