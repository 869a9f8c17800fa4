import QtQuick
import QtQuick.Layouts
import Velto

// An explanatory line of the settings form, in the smaller secondary style; it can be selected
// and copied, since some of them hold a command to type.
TextEdit {
    readOnly: true
    selectByMouse: true
    selectByKeyboard: true
    wrapMode: TextEdit.Wrap
    color: Theme.secondaryText
    selectionColor: Theme.accent
    font.pixelSize: Theme.calloutSize
    Layout.fillWidth: true
    // Read-only text needs no caret stop of its own when moving through the form.
    activeFocusOnTab: false
}
