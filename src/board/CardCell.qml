import QtQuick
import Velto

// One card in a column: its face, and what a click, a double click, a drag and a secondary click
// do with it.
Item {
    id: cell
    objectName: "cardCell"
    required property BoardModel board
    required property TimerModel timer
    required property string cardID
    required property var face
    signal removeRequested(string cardID, string name)

    readonly property bool timerRunsHere: timer.runningCardID === cardID

    implicitHeight: faceView.implicitHeight
    activeFocusOnTab: true
    Keys.onReturnPressed: board.requestOpenInFinder(cardID)
    Keys.onSpacePressed: board.selectedCardID = cardID
    Keys.onMenuPressed: cell.showMenu(0, cell.height)

    // The menu is made on first use: a column of cards would otherwise carry a menu per card.
    property CardContextMenu menu: null
    function showMenu(x, y) {
        if (menu === null)
            menu = menuComponent.createObject(cell)
        menu.popup(cell, x, y)
    }

    MouseArea {
        id: pointer
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        drag.target: dragProxy
        onPressed: function (mouse) {
            if (mouse.button !== Qt.LeftButton)
                return
            dragProxy.Drag.hotSpot.x = mouse.x
            dragProxy.Drag.hotSpot.y = mouse.y
            faceView.grabToImage(function (image) { dragImage.source = image.url })
        }
        onReleased: {
            if (dragProxy.Drag.active)
                dragProxy.Drag.drop()
            dragProxy.x = 0
            dragProxy.y = 0
        }
        onClicked: function (mouse) {
            if (mouse.button === Qt.RightButton)
                cell.showMenu(mouse.x, mouse.y)
            else
                cell.board.selectedCardID = cell.cardID
        }
        onDoubleClicked: function (mouse) {
            if (mouse.button === Qt.LeftButton)
                cell.board.requestOpenInFinder(cell.cardID)
        }
    }

    CardFaceView {
        id: faceView
        width: parent.width
        face: cell.face
        isSelected: cell.board.selectedCardID === cell.cardID
        isTimerRunning: cell.timerRunsHere
        elapsed: cell.timerRunsHere ? cell.timer.elapsed : 0
        onToggleTimer: cell.board.requestToggleTimer(cell.cardID)
    }

    // What the pointer drags: a picture of the card carrying its id. The drag stays inside this
    // window, so no other program is ever offered a card, and none can hand one in.
    Item {
        id: dragProxy
        objectName: "cardDragProxy"
        readonly property string cardID: cell.cardID
        width: cell.width
        height: cell.height
        Drag.active: pointer.drag.active
        Drag.keys: [BoardVocabulary.cardDragType]
        Drag.supportedActions: Qt.MoveAction
        // The hot spot is where the card was taken hold of, set at the press: the proxy travels
        // with the pointer, so the pointer's later positions would count its travel twice.

        Image {
            id: dragImage
            anchors.fill: parent
            visible: pointer.drag.active
            opacity: 0.85
        }

        // Lifted out of the column while dragged, so that it can travel over the whole board.
        states: State {
            when: pointer.drag.active
            ParentChange {
                target: dragProxy
                parent: cell.Window.contentItem
            }
        }
    }

    Component {
        id: menuComponent
        CardContextMenu {
            objectName: "cardContextMenu"
            board: cell.board
            face: cell.face
            timerRunsHere: cell.timerRunsHere
            onRemoveRequested: cell.removeRequested(cell.cardID, cell.face.displayName)
        }
    }
}
