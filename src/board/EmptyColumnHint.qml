import QtQuick
import Velto

// What an empty column shows; it takes a drop like the head of the column.
Item {
    id: root
    required property BoardModel board
    required property int status
    property string laneKind: "any"
    property string laneProjectID: ""
    // Lit also while a drop hovers somewhere that lands at the same place.
    property bool isTargetedElsewhere: false

    readonly property bool isTargeted: dropArea.containsDrag || isTargetedElsewhere

    implicitHeight: hint.implicitHeight + 2 * 24

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: "transparent"
        border.width: 2
        border.color: root.isTargeted ? BoardVocabulary.accentColor(root.status, Theme.dark) : "transparent"
    }

    Text {
        id: hint
        objectName: "emptyColumnHint"
        anchors.centerIn: parent
        width: parent.width - 16
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        text: root.status === 0 ? PlatformWords.emptyColumnHint : "Nothing here."
        font.pointSize: 11.5 * 0.75
        color: Theme.pick("#9A948A", "#726D65")
    }

    BoardDropArea {
        id: dropArea
        anchors.fill: parent
        board: root.board
        status: root.status
        position: 0
        laneKind: root.laneKind
        laneProjectID: root.laneProjectID
    }
}
