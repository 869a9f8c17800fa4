// Not bound: the month grid hands each day's data to its delegate through the delegate's context,
// which a bound component does not allow, and every day would print a warning.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// A date, shown in the locale's short form, that opens a month to pick another day. It never
// changes `date` itself: it reports the day picked, at the time of day `date` had, and the owner
// stores it.
AbstractButton {
    id: field

    required property date date
    signal picked(date chosen)

    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    leftPadding: 8
    rightPadding: 8
    topPadding: 4
    bottomPadding: 4
    onClicked: {
        month.shown = new Date(field.date.getFullYear(), field.date.getMonth(), 1)
        calendar.open()
    }

    // The picked day at the time of day of the current date.
    function choose(day) {
        const chosen = new Date(field.date)
        chosen.setFullYear(day.getFullYear(), day.getMonth(), day.getDate())
        calendar.close()
        field.picked(chosen)
    }

    contentItem: Row {
        spacing: 6
        Symbol {
            name: "calendar"
            size: 12
            color: Theme.secondaryText
            anchors.verticalCenter: parent.verticalCenter
        }
        Label {
            objectName: "dateText"
            text: field.date.toLocaleDateString(Qt.locale(), Locale.ShortFormat)
            font.pixelSize: 12
            color: Theme.primaryText
            anchors.verticalCenter: parent.verticalCenter
        }
    }
    background: Rectangle {
        radius: 5
        color: Theme.controlBackground
        border.width: 1
        border.color: field.visualFocus ? Theme.accent : Theme.separator
    }

    Popup {
        id: calendar
        objectName: "datePickerPopup"
        y: field.height + 2
        padding: 8

        contentItem: ColumnLayout {
            id: month
            property date shown: new Date()
            spacing: 4

            RowLayout {
                Layout.fillWidth: true
                ToolButton {
                    text: "‹"
                    onClicked: month.shown = new Date(month.shown.getFullYear(), month.shown.getMonth() - 1, 1)
                }
                Label {
                    text: month.shown.toLocaleDateString(Qt.locale(), "MMMM yyyy")
                    horizontalAlignment: Text.AlignHCenter
                    color: Theme.primaryText
                    Layout.fillWidth: true
                }
                ToolButton {
                    text: "›"
                    onClicked: month.shown = new Date(month.shown.getFullYear(), month.shown.getMonth() + 1, 1)
                }
            }
            DayOfWeekRow {
                locale: Qt.locale()
                Layout.fillWidth: true
            }
            MonthGrid {
                id: grid
                objectName: "monthGrid"
                month: month.shown.getMonth()
                year: month.shown.getFullYear()
                locale: Qt.locale()
                Layout.fillWidth: true
                onClicked: day => field.choose(day)
                delegate: Label {
                    required property var model
                    readonly property bool isChosen: model.year === field.date.getFullYear()
                                                     && model.month === field.date.getMonth()
                                                     && model.day === field.date.getDate()
                    text: model.day
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    opacity: model.month === grid.month ? 1 : 0.4
                    color: isChosen ? "#FFFFFF" : Theme.primaryText // white on the accent in both appearances
                    background: Rectangle {
                        radius: 4
                        color: parent.isChosen ? Theme.accent : "transparent"
                    }
                }
            }
        }
    }
}
