pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// A date with its hour and minute, each changed on its own. Like the date field it reports a new
// value and leaves storing it to the owner; the seconds of `value` stay as they were.
RowLayout {
    id: field

    required property date value
    signal edited(date value)

    spacing: 6

    function withTime(hours, minutes) {
        const changed = new Date(field.value)
        changed.setHours(hours, minutes)
        field.edited(changed)
    }

    DatePickerField {
        objectName: "dayPicker"
        date: field.value
        onPicked: chosen => field.edited(chosen)
    }
    SpinBox {
        objectName: "hourBox"
        from: 0
        to: 23
        editable: true
        value: field.value.getHours()
        textFromValue: (number, locale) => String(number).padStart(2, "0")
        onValueModified: field.withTime(value, field.value.getMinutes())
        Layout.preferredWidth: 86
    }
    Label {
        text: ":"
        color: Theme.primaryText
    }
    SpinBox {
        objectName: "minuteBox"
        from: 0
        to: 59
        editable: true
        value: field.value.getMinutes()
        textFromValue: (number, locale) => String(number).padStart(2, "0")
        onValueModified: field.withTime(field.value.getHours(), value)
        Layout.preferredWidth: 86
    }
}
