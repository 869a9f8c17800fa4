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
        // Started by hand rather than bound: the platform drag runs to its end inside this call, and
        // a binding to the pointer's drag state would be read again while it is still being written.
        drag.onActiveChanged: {
            if (pointer.drag.active)
                dragProxy.Drag.active = true
        }
        onPressed: function (mouse) {
            if (mouse.button === Qt.LeftButton)
                faceView.grabToImage(function (image) { dragProxy.Drag.imageSource = image.url })
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

    // What the pointer drags: the card's id, for this board only.
    Item {
        id: dragProxy
        width: parent.width
        height: parent.height
        Drag.dragType: Drag.Automatic
        Drag.supportedActions: Qt.MoveAction
        Drag.hotSpot.x: pointer.mouseX
        Drag.hotSpot.y: pointer.mouseY
        Drag.mimeData: ({ "io.quillmere.Velto.card": cell.cardID })
        Drag.onDragFinished: {
            dragProxy.x = 0
            dragProxy.y = 0
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
