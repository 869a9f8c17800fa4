import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// One card of the due-soon list: when it is due, its project, its name and its status. The badge
// sits in a fixed width so that the names of all rows line up.
Rectangle {
    id: row

    // A card face map of the board.
    required property var face
    required property bool isSelected

    signal selectRequested()
    signal openRequested()

    objectName: "dueSoonRow"
    implicitHeight: content.implicitHeight + 14
    radius: 4
    color: row.isSelected ? Qt.rgba(Theme.accent.r, Theme.accent.g, Theme.accent.b, 0.15) : "transparent"

    RowLayout {
        id: content
        anchors.fill: parent
        anchors.leftMargin: 6
        anchors.rightMargin: 6
        anchors.topMargin: 7
        anchors.bottomMargin: 7
        spacing: 10

        Item {
            implicitHeight: badge.implicitHeight
            Layout.preferredWidth: 150

            DeadlineBadge {
                id: badge
                deadline: row.face.deadline
                isComplete: row.face.isComplete
                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
            }
        }

        ProjectDot {
            objectName: "dueSoonProjectDot"
            visible: row.face.projectID !== ""
            color: row.face.projectColor
            ToolTip.text: row.face.projectName
            ToolTip.visible: dotHover.hovered

            HoverHandler {
                id: dotHover
            }
        }

        Label {
            objectName: "dueSoonName"
            text: row.face.displayName
            elide: Text.ElideMiddle
            maximumLineCount: 1
            color: Theme.primaryText
            font.pixelSize: Theme.bodySize
            Layout.fillWidth: true
        }

        Row {
            spacing: 4
            // With the row's own gap, twelve points from the name.
            Layout.leftMargin: 2

            Symbol {
                name: BoardVocabulary.statusSymbol(row.face.status)
                size: 11
                color: Theme.secondaryText
                anchors.verticalCenter: parent.verticalCenter
            }
            Label {
                objectName: "dueSoonStatus"
                text: BoardVocabulary.statusLabel(row.face.status)
                color: Theme.secondaryText
                font.pixelSize: 11 // the caption font
                anchors.verticalCenter: parent.verticalCenter
            }
        }
    }

    // Both gestures count anywhere on the row.
    MouseArea {
        anchors.fill: parent
        onClicked: row.selectRequested()
        onDoubleClicked: row.openRequested()
    }
}
