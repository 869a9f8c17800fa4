import QtQuick
import QtQuick.Controls
import Velto

// A deadline in a few words, with the urgency's symbol and colour; nothing without a deadline.
// The words are worked out when the badge is drawn, from the present moment and time zone.
Row {
    id: root
    // A JS Date or a QDateTime; undefined or null when the card has no deadline.
    property var deadline
    property bool isComplete: false

    readonly property bool hasDeadline: root.deadline !== undefined && root.deadline !== null
                                        && !isNaN(root.deadline)
    readonly property int urgency: hasDeadline
                                   ? DeadlinePresenter.urgency(root.deadline, root.isComplete, DeadlinePresenter.today)
                                   : DeadlinePresenter.None
    readonly property string symbolName: DeadlinePresenter.symbolName(root.urgency)
    readonly property color tint: {
        // The warning colours of a deadline belong to it alone, not to the theme's surfaces.
        switch (root.urgency) {
        case DeadlinePresenter.Near: return Theme.pick("#FF9F0A", "#FF9500")
        case DeadlinePresenter.Overdue: return Theme.pick("#FF453A", "#FF3B30")
        default: return Theme.secondaryText
        }
    }

    objectName: "deadlineBadge"
    visible: hasDeadline
    spacing: 4

    ToolTip.text: hasDeadline ? DeadlinePresenter.helpText(root.deadline) : ""
    ToolTip.visible: hover.hovered && hasDeadline

    HoverHandler {
        id: hover
    }

    // Loaded only when the urgency has a symbol, so no image is asked for a name that is empty.
    Loader {
        objectName: "deadlineSymbol"
        active: root.symbolName !== ""
        visible: active
        anchors.verticalCenter: parent.verticalCenter
        sourceComponent: Symbol {
            name: root.symbolName
            size: 11
            color: root.tint
        }
    }

    Text {
        objectName: "deadlineText"
        text: root.hasDeadline ? DeadlinePresenter.text(root.deadline, DeadlinePresenter.today) : ""
        color: root.tint
        font.pixelSize: 11 // the caption font
        anchors.verticalCenter: parent.verticalCenter
    }
}
