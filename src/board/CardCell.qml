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
    Accessible.role: Accessible.ListItem
    Accessible.focusable: true
    Accessible.name: (face.title ?? "") + ", " + BoardVocabulary.statusLabel(face.status ?? 0)
                     + ", priority " + BoardVocabulary.priorityLabel(face.priority ?? 4)

    // While a card has the keyboard, the moves act on it rather than on the selected card, so its
    // keys win over the menus' shortcuts.
    Keys.onShortcutOverride: function (event) { event.accepted = cell.keyAction(event) !== null }
    Keys.onPressed: function (event) {
        const action = cell.keyAction(event)
        if (action !== null) {
            action()
            event.accepted = true
        }
    }
    onActiveFocusChanged: {
        if (activeFocus)
            board.focusedCardID = cardID
    }
    onCardIDChanged: {
        if (activeFocus && board.focusedCardID !== cardID)
            cell.focus = false
        cell.claimFocus()
    }
    Component.onCompleted: cell.claimFocus()

    // What a key does on this card, or null when the card leaves it to others.
    function keyAction(event) {
        const modifiers = event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.ShiftModifier | Qt.MetaModifier)
        const status = cell.face.status ?? 0
        if (modifiers === (Qt.ControlModifier | Qt.AltModifier)) {
            switch (event.key) {
            case Qt.Key_Left: return () => board.requestSetStatus(cardID, status - 1)
            case Qt.Key_Right: return () => board.requestSetStatus(cardID, status + 1)
            case Qt.Key_Up: return () => board.requestMoveInColumn(cardID, 1)
            case Qt.Key_Down: return () => board.requestMoveInColumn(cardID, 2)
            }
            return null
        }
        if (modifiers === Qt.ShiftModifier)
            return event.key === Qt.Key_F10 ? () => cell.showMenu(0, cell.height) : null
        if (modifiers !== 0)
            return null
        switch (event.key) {
        case Qt.Key_Up: return cell.stepAction(CardStep.Step.up)
        case Qt.Key_Down: return cell.stepAction(CardStep.Step.down)
        case Qt.Key_Left: return cell.stepAction(CardStep.Step.left)
        case Qt.Key_Right: return cell.stepAction(CardStep.Step.right)
        case Qt.Key_Home: return cell.stepAction(CardStep.Step.first)
        case Qt.Key_End: return cell.stepAction(CardStep.Step.last)
        case Qt.Key_Return:
        case Qt.Key_Enter:
        case Qt.Key_Space: return () => board.selectedCardID = cardID
        case Qt.Key_Escape:
            return board.selectedCardID === cardID ? () => board.selectedCardID = "" : null
        case Qt.Key_Delete: return () => cell.removeRequested(cardID, cell.face.displayName ?? "")
        case Qt.Key_Menu: return () => cell.showMenu(0, cell.height)
        }
        return null
    }

    // A step that leads nowhere is still this card's key, so the focus does not wander off the board.
    function stepAction(step) {
        return () => {
            const next = board.neighbourCardID(cardID, step)
            if (next !== "")
                board.requestCardFocus(next)
        }
    }

    // Takes the keyboard when this is the card it was on and it was on the board: a new cell for a
    // card moved by keys, or one scrolled into view. A field being typed in keeps it.
    function claimFocus() {
        if (board.focusedCardID !== cardID || activeFocus)
            return
        const holder = Window.activeFocusItem
        if (holder === null || holder === Window.contentItem || holder.objectName === "cardCell"
                || holder.objectName === "columnList")
            cell.forceActiveFocus()
    }

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
        // A card pressed and moved is being dragged, even straight up or down: the column's list
        // would otherwise take that movement as a scroll. The wheel and the bar still scroll it.
        preventStealing: true
        // Where the card was taken hold of, and whether it has moved far enough to be dragged.
        property point heldAt
        property bool isDragging: false
        onPressed: function (mouse) {
            isDragging = false
            if (mouse.button !== Qt.LeftButton)
                return
            heldAt = Qt.point(mouse.x, mouse.y)
            dragProxy.Drag.hotSpot.x = mouse.x
            dragProxy.Drag.hotSpot.y = mouse.y
            faceView.grabToImage(function (image) { dragImage.source = image.url })
        }
        // The picture keeps the point taken hold of under the pointer, so that a drop lands where
        // the pointer is, in whichever direction the card set off.
        onPositionChanged: function (mouse) {
            if (!(mouse.buttons & Qt.LeftButton))
                return
            if (!isDragging && Math.max(Math.abs(mouse.x - heldAt.x), Math.abs(mouse.y - heldAt.y))
                    < Qt.styleHints.startDragDistance)
                return
            isDragging = true
            const corner = mapToItem(cell.Window.contentItem, mouse.x - heldAt.x, mouse.y - heldAt.y)
            dragProxy.x = corner.x
            dragProxy.y = corner.y
        }
        function putBack() {
            isDragging = false
            dragProxy.x = 0
            dragProxy.y = 0
        }
        onReleased: {
            if (dragProxy.Drag.active)
                dragProxy.Drag.drop()
            putBack()
        }
        onCanceled: putBack()
        onClicked: function (mouse) {
            cell.forceActiveFocus()
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

    // The keyboard's place: a wide, softer ring on the card's edge, which reads apart from the
    // selection's thin one and thickens it when both are on the same card. It stays inside the
    // card, where a scrolling column does not clip it.
    Rectangle {
        objectName: "cardFocusRing"
        anchors.fill: faceView
        visible: cell.activeFocus
        radius: 9
        color: "transparent"
        border.width: 3
        border.color: Qt.rgba(Theme.accent.r, Theme.accent.g, Theme.accent.b, 0.55)
    }

    // What the pointer drags: a picture of the card carrying its id. The drag stays inside this
    // window, so no other program is ever offered a card, and none can hand one in.
    Item {
        id: dragProxy
        objectName: "cardDragProxy"
        readonly property string cardID: cell.cardID
        width: cell.width
        height: cell.height
        Drag.active: pointer.isDragging
        Drag.keys: [BoardVocabulary.cardDragType]
        Drag.supportedActions: Qt.MoveAction
        // The hot spot is where the card was taken hold of, set at the press.

        Image {
            id: dragImage
            anchors.fill: parent
            visible: pointer.isDragging
            opacity: 0.85
        }

        // Lifted out of the column while dragged, so that it can travel over the whole board.
        states: State {
            when: pointer.isDragging
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
