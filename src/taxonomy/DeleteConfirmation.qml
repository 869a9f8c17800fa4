import QtQuick
import QtQuick.Controls
import Velto

// Asks before a deletion. "Delete" reports `confirmed` and closes; "Cancel", Escape and every other
// way of closing only close, so nothing is deleted unless the user said so.
Dialog {
    id: confirmation

    property string message

    signal confirmed()

    modal: true
    focus: true
    anchors.centerIn: Overlay.overlay
    width: 340
    closePolicy: Popup.CloseOnEscape

    contentItem: Label {
        objectName: "confirmationMessage"
        text: confirmation.message
        wrapMode: Text.Wrap
        color: Theme.secondaryText
        font.pixelSize: Theme.bodySize
    }

    footer: DialogButtonBox {
        Button {
            objectName: "confirmDeleteButton"
            text: "Delete"
            // The system's red for an action that destroys something.
            palette.buttonText: Theme.pick("#FF453A", "#FF3B30")
            DialogButtonBox.buttonRole: DialogButtonBox.DestructiveRole
            onClicked: {
                confirmation.confirmed()
                confirmation.close()
            }
        }
        Button {
            objectName: "cancelDeleteButton"
            text: "Cancel"
            DialogButtonBox.buttonRole: DialogButtonBox.RejectRole
        }
    }
}
