pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// One tracked session: when it started, and how long it lasted or that it still runs. A double
// click edits a finished session; the menu edits or deletes.
ColumnLayout {
    id: row

    required property string sessionID
    required property date startedAt
    required property date endedAt
    required property bool isRunning
    required property real durationSeconds
    required property bool metTarget

    signal editRequested()
    signal deleteRequested()

    objectName: "sessionRow"
    spacing: 4

    RowLayout {
        spacing: 8
        Layout.fillWidth: true
        Layout.topMargin: 2

        Label {
            objectName: "sessionStart"
            text: row.startedAt.toLocaleString(Qt.locale(), Locale.ShortFormat)
            font.pixelSize: 12
            color: Theme.primaryText
            Layout.fillWidth: true
        }
        Symbol {
            objectName: "sessionMetTarget"
            visible: row.metTarget
            name: "checkmark.circle.fill"
            size: 11
            color: Theme.accent
            ToolTip.text: "Met its target"
            ToolTip.visible: metTargetHover.hovered
            HoverHandler {
                id: metTargetHover
            }
        }
        Label {
            objectName: "sessionLength"
            visible: !row.isRunning
            text: SessionTimeText.duration(row.durationSeconds)
            font.pixelSize: 12
            color: Theme.secondaryText
        }
        Row {
            visible: row.isRunning
            spacing: 3
            Symbol {
                name: "record.circle"
                size: 10
                color: Theme.red
                anchors.verticalCenter: parent.verticalCenter
            }
            Label {
                objectName: "sessionRunning"
                text: "Running"
                font.pixelSize: 11
                color: Theme.red
                anchors.verticalCenter: parent.verticalCenter
            }
        }
    }
    DetailDivider {}

    TapHandler {
        acceptedButtons: Qt.LeftButton
        onDoubleTapped: {
            if (!row.isRunning)
                row.editRequested()
        }
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: sessionMenu.popup()
    }

    Menu {
        id: sessionMenu
        objectName: "sessionMenu"
        MenuItem {
            text: "Edit…"
            enabled: !row.isRunning
            onTriggered: row.editRequested()
        }
        MenuItem {
            text: "Delete"
            palette.windowText: Theme.red
            palette.buttonText: Theme.red
            onTriggered: row.deleteRequested()
        }
    }
}
