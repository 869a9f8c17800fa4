pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// The board's second mode: the cards due within seven days or overdue, earliest first, as one
// flat list. A click selects a card, a double click shows its folder in the file manager; the
// arrow keys move the selection and Return opens it.
Item {
    id: view

    required property BoardModel model

    readonly property var faces: view.model.dueSoonList
    readonly property int selectedIndex: view.faces.findIndex(face => face.cardID === view.model.selectedCardID)

    function select(index) {
        if (index < 0 || index >= view.faces.length)
            return
        view.model.selectedCardID = view.faces[index].cardID
        list.positionViewAtIndex(index, ListView.Contain)
    }

    objectName: "dueSoonView"

    ColumnLayout {
        objectName: "dueSoonEmpty"
        visible: view.faces.length === 0
        anchors.centerIn: parent
        width: Math.min(parent.width - 80, 420)
        spacing: 8

        Symbol {
            name: "calendar"
            size: 40
            color: Theme.secondaryText
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            objectName: "dueSoonEmptyTitle"
            text: "Nothing due soon"
            color: Theme.primaryText
            font.pixelSize: Theme.titleSize
            font.bold: true
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            objectName: "dueSoonEmptyDescription"
            text: "Cards with a deadline in the next seven days, or already overdue, appear here."
            color: Theme.secondaryText
            font.pixelSize: Theme.bodySize
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }

    ListView {
        id: list
        objectName: "dueSoonList"
        visible: view.faces.length > 0
        anchors.fill: parent
        anchors.leftMargin: 14
        anchors.rightMargin: 14
        topMargin: 8
        bottomMargin: 8
        clip: true
        focus: true
        activeFocusOnTab: true
        model: view.faces
        ScrollBar.vertical: ScrollBar {}

        Keys.onUpPressed: view.select(Math.max(view.selectedIndex - 1, 0))
        Keys.onDownPressed: view.select(view.selectedIndex + 1)
        Keys.onReturnPressed: {
            if (view.selectedIndex >= 0)
                view.model.requestOpenInFinder(view.model.selectedCardID)
        }

        delegate: Column {
            id: entry
            required property var modelData
            width: ListView.view.width

            DueSoonRow {
                face: entry.modelData
                isSelected: entry.modelData.cardID === view.model.selectedCardID
                width: parent.width
                onSelectRequested: view.model.selectedCardID = entry.modelData.cardID
                onOpenRequested: view.model.requestOpenInFinder(entry.modelData.cardID)
            }
            Rectangle {
                width: parent.width
                height: 1
                color: Theme.separator
            }
        }
    }
}
