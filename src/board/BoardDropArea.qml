pragma ComponentBehavior: Bound
import QtQuick
import Velto

// Takes what is dropped at one place of a column - cards dragged inside the board, folders and
// files from the file manager - and hands it to the board with that place.
DropArea {
    id: root
    required property BoardModel board
    required property int status
    required property int position
    property string laneKind: "any"
    property string laneProjectID: ""

    readonly property string cardType: "io.quillmere.Velto.card"

    keys: [root.cardType, "text/uri-list"]

    onDropped: function (drop) {
        const cardData = drop.formats.indexOf(root.cardType) >= 0 ? drop.getDataAsString(root.cardType) : ""
        // A drag from this window carries its source item; one from another program carries none.
        root.board.requestDrop(cardData, drop.urls, drop.source !== null, root.status, root.position,
                               root.laneKind, root.laneProjectID)
        drop.accept(Qt.CopyAction)
    }
}
