import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// One status column of one lane: its head with the count, then its cards with a drop place before,
// between and after them.
// The file stays without bound components: the list view of Qt 6.4 cannot make a bound header or
// footer, and the drop places before the first card and after the last would silently be missing.
Rectangle {
    id: column
    required property BoardModel board
    required property TimerModel timer
    required property int status
    property string laneKind: "any"
    property string laneProjectID: ""
    property bool scrolls: true

    // The card waiting for the user to confirm its removal.
    property string pendingRemovalID: ""
    property string pendingRemovalName: ""

    color: BoardVocabulary.columnFill(status, Theme.dark)
    radius: 11
    implicitHeight: head.implicitHeight + 7 + (scrolls ? 0 : list.contentHeight) + 16 + 8

    BoardColumnModel {
        id: cards
        board: column.board
        status: column.status
        laneKind: column.laneKind
        laneProjectID: column.laneProjectID
    }

    // The keyboard goes to a card of this column: it is scrolled into view, and its cell, made
    // now if it was not, takes the focus.
    Connections {
        target: column.board
        function onCardFocusRequested(cardID) {
            const row = cards.rowOf(cardID)
            if (row < 0)
                return
            list.positionViewAtIndex(row, ListView.Contain)
            const entry = list.itemAtIndex(row)
            if (entry)
                entry.cell.forceActiveFocus()
        }
    }

    ColumnLayout {
        id: layout
        anchors.fill: parent
        anchors.margins: 8
        anchors.bottomMargin: 16
        spacing: 7

        RowLayout {
            id: head
            Layout.fillWidth: true
            Layout.leftMargin: 2
            Layout.rightMargin: 2
            Text {
                objectName: "columnTitle"
                text: BoardVocabulary.statusLabel(column.status)
                font.pointSize: 12.5 * 0.75
                font.weight: Font.DemiBold
                font.letterSpacing: 0.15
                color: Theme.pick("#EFECE6", "#1A1917")
                Layout.fillWidth: true
                elide: Text.ElideRight
            }
            Rectangle {
                implicitWidth: countText.implicitWidth + 14
                implicitHeight: countText.implicitHeight + 2
                radius: height / 2
                color: BoardVocabulary.pillFill(column.status, Theme.dark)
                Text {
                    id: countText
                    objectName: "columnCount"
                    anchors.centerIn: parent
                    text: cards.count
                    font.pointSize: 11.5 * 0.75
                    font.weight: Font.DemiBold
                    color: BoardVocabulary.pillText(column.status, Theme.dark)
                }
            }
        }

        ListView {
            id: list
            objectName: "columnList"
            Layout.fillWidth: true
            // In a lane the column may be taller than its cards; the list takes the rest, from the top.
            Layout.fillHeight: true
            Layout.preferredHeight: column.scrolls ? -1 : contentHeight
            interactive: column.scrolls
            clip: column.scrolls
            boundsBehavior: Flickable.StopAtBounds
            // A card that leaves the visible part hands its cell to the one that comes in, so a
            // move or a scroll builds no new cell.
            reuseItems: true
            // The cells take the keyboard themselves. A current item would be handed the focus by
            // the list whenever its rows change, taking it from the card the user is on.
            currentIndex: -1
            keyNavigationEnabled: false
            model: cards
            ScrollBar.vertical: ScrollBar {
                policy: column.scrolls ? ScrollBar.AsNeeded : ScrollBar.AlwaysOff
            }

            header: DropTarget {
                width: ListView.view.width
                board: column.board
                status: column.status
                position: 0
                laneKind: column.laneKind
                laneProjectID: column.laneProjectID
            }

            delegate: Column {
                id: entry
                required property int index
                required property string cardID
                required property var face
                readonly property alias cell: entryCell
                width: ListView.view.width

                // A cell handed on to another card must not take the keyboard with it.
                ListView.onPooled: {
                    if (entryCell.activeFocus)
                        entryCell.focus = false
                }
                // A cell back from the pool may be given the very card it showed before, so no
                // change of card tells it to take the keyboard.
                ListView.onReused: entryCell.claimFocus()

                CardCell {
                    id: entryCell
                    width: parent.width
                    board: column.board
                    timer: column.timer
                    cardID: entry.cardID
                    face: entry.face
                    onRemoveRequested: function (cardID, name) {
                        column.pendingRemovalID = cardID
                        column.pendingRemovalName = name
                        removal.open()
                    }
                }
                DropTarget {
                    width: parent.width
                    board: column.board
                    status: column.status
                    position: entry.index + 1
                    laneKind: column.laneKind
                    laneProjectID: column.laneProjectID
                }
            }

            // Under the last card the free space takes a drop at the bottom; an empty column says so.
            footer: Item {
                width: ListView.view.width
                implicitHeight: cards.count > 0 ? tail.implicitHeight : hint.implicitHeight
                DropTarget {
                    id: tail
                    objectName: "tailDropTarget"
                    visible: cards.count > 0
                    width: parent.width
                    board: column.board
                    status: column.status
                    position: cards.count
                    laneKind: column.laneKind
                    laneProjectID: column.laneProjectID
                    minimumHeight: 60
                    isTargetedElsewhere: freeSpace.containsDrag
                }
                EmptyColumnHint {
                    id: hint
                    visible: cards.count === 0
                    width: parent.width
                    board: column.board
                    status: column.status
                    laneKind: column.laneKind
                    laneProjectID: column.laneProjectID
                    isTargetedElsewhere: freeSpace.containsDrag
                }
            }
        }
    }

    // The rest of the column under its last place takes a drop at the bottom as well: a card let go
    // anywhere below the cards is meant for the end of the column.
    BoardDropArea {
        id: freeSpace
        objectName: "freeSpaceDropArea"
        readonly property real listEnd: layout.y + list.y + list.contentHeight + list.originY - list.contentY
        y: Math.min(listEnd, column.height)
        width: column.width
        height: column.height - y
        board: column.board
        status: column.status
        position: cards.count
        laneKind: column.laneKind
        laneProjectID: column.laneProjectID
    }

    Dialog {
        id: removal
        objectName: "removalDialog"
        parent: Overlay.overlay
        anchors.centerIn: parent
        modal: true
        title: "Remove “%1” from the board?".arg(column.pendingRemovalName)
        Label {
            text: "The folder stays exactly where it is. Velto only stops tracking it."
            wrapMode: Text.Wrap
        }
        footer: DialogButtonBox {
            Button {
                objectName: "confirmRemoval"
                text: "Remove"
                DialogButtonBox.buttonRole: DialogButtonBox.DestructiveRole
                onClicked: {
                    column.board.requestRemoveCard(column.pendingRemovalID)
                    removal.close()
                }
            }
            Button {
                text: "Cancel"
                DialogButtonBox.buttonRole: DialogButtonBox.RejectRole
                onClicked: removal.close()
            }
        }
        onClosed: {
            column.pendingRemovalID = ""
            column.pendingRemovalName = ""
        }
    }
}
