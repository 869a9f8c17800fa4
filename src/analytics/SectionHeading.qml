import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The title of a section of the analytics window, with an optional line below it.
ColumnLayout {
    id: heading
    required property string title
    property string subtitle: ""

    spacing: 2

    Label {
        text: heading.title
        font.pixelSize: Theme.headlineSize
        font.weight: Font.DemiBold
        color: Theme.primaryText
    }
    Label {
        visible: heading.subtitle !== ""
        text: heading.subtitle
        font.pixelSize: Theme.captionSize
        color: Theme.secondaryText
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
}
