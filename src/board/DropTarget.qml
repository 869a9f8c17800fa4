import QtQuick
import Velto

// A gap in a column that takes a drop: a thin bar in the status's colour while something hovers
// over it, invisible otherwise.
Item {
    id: root
    objectName: "dropTarget"
    required property BoardModel board
    required property int status
    required property int position
    property string laneKind: "any"
    property string laneProjectID: ""
    property real minimumHeight: 0
    // Lit also while a drop hovers somewhere that lands at the same place.
    property bool isTargetedElsewhere: false

    readonly property bool isTargeted: dropArea.containsDrag || isTargetedElsewhere

    implicitHeight: Math.max(3 + 2 * 6, minimumHeight)

    Rectangle {
        anchors.top: parent.top
        anchors.topMargin: 6
        width: parent.width
        height: 3
        radius: 1.5
        color: root.isTargeted ? BoardVocabulary.accentColor(root.status, Theme.dark) : "transparent"
        Behavior on color {
            ColorAnimation {
                duration: 120
                easing.type: Easing.OutQuad
            }
        }
    }

    BoardDropArea {
        id: dropArea
        anchors.fill: parent
        board: root.board
        status: root.status
        position: root.position
        laneKind: root.laneKind
        laneProjectID: root.laneProjectID
    }
}
