pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// All the time ever tracked, per project, largest first.
ColumnLayout {
    id: section
    required property AnalyticsModel model

    spacing: 10

    SectionHeading {
        title: "Total tracked time"
    }
    Label {
        objectName: "nothingTrackedText"
        visible: section.model.projectTotals.length === 0
        text: "Nothing tracked yet."
        color: Theme.secondaryText
        font.pixelSize: Theme.bodySize
    }
    ColumnLayout {
        spacing: 0
        Layout.fillWidth: true
        Repeater {
            model: section.model.projectTotals
            delegate: ColumnLayout {
                id: totalRow
                required property var modelData
                objectName: "projectTotalRow"
                spacing: 0
                Layout.fillWidth: true

                RowLayout {
                    spacing: 10
                    Layout.fillWidth: true
                    Layout.topMargin: 5
                    Layout.bottomMargin: 5
                    Swatch {
                        objectName: "projectTotalDot"
                        hex: totalRow.modelData.colorHex
                        size: 8
                    }
                    Label {
                        text: totalRow.modelData.seriesName
                        color: Theme.primaryText
                        font.pixelSize: Theme.bodySize
                        elide: Text.ElideRight
                        Layout.fillWidth: true
                    }
                    Label {
                        text: totalRow.modelData.duration
                        color: Theme.secondaryText
                        font.pixelSize: Theme.bodySize
                    }
                }
                AnalyticsSeparator {}
            }
        }
    }
}
