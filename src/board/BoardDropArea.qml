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

    keys: [BoardVocabulary.cardDragType, "text/uri-list"]

    onDropped: function (drop) {
        const proxy = drop.source
        if (proxy !== null && proxy.objectName === "cardDragProxy") {
            // A card dragged on this board.
            root.board.requestCardDrop(proxy.cardID, root.status, root.position, root.laneKind, root.laneProjectID)
        } else {
            // Another program's drag: its card payload, if it offers one, goes on as bytes, so that
            // nothing is lost or made up by reading it as text.
            const offersCard = drop.formats.indexOf(BoardVocabulary.cardDragType) >= 0
            root.board.requestDrop(offersCard ? drop.getDataAsArrayBuffer(BoardVocabulary.cardDragType) : new ArrayBuffer(0),
                                   offersCard, drop.urls, root.status, root.position, root.laneKind,
                                   root.laneProjectID)
        }
        drop.accept(Qt.CopyAction)
    }
}
