// Not bound: the sheet makes its content after it was made itself, where a bound component of
// the file may not be instantiated.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtQuick.Pdf
import Velto

// A look at one checklist file without leaving Velto: a picture, a text, a rendered markdown
// file or a PDF; anything else shows its name and offers to open it. It opens whenever `url` is
// set, and `closed` tells the owner to clear it.
Popup {
    id: sheet

    required property url url

    readonly property string fileName: {
        const path = sheet.url.toString()
        return decodeURIComponent(path.substring(path.lastIndexOf("/") + 1))
    }
    readonly property int kind: sheet.url.toString() === "" ? FilePreview.Kind.other : FilePreview.kind(sheet.url)

    parent: Overlay.overlay
    anchors.centerIn: parent
    width: Math.max(520, parent ? parent.width * 0.6 : 520)
    height: Math.max(420, parent ? parent.height * 0.7 : 420)
    modal: true
    padding: 0
    closePolicy: Popup.CloseOnEscape

    onUrlChanged: {
        if (sheet.url.toString() !== "")
            sheet.open()
        else
            sheet.close()
    }

    background: Rectangle {
        radius: 10
        color: Theme.windowBackground
        border.width: 1
        border.color: Theme.separator
    }

    contentItem: ColumnLayout {
        spacing: 0

        RowLayout {
            spacing: 10
            Layout.fillWidth: true
            Layout.margins: 10
            Label {
                objectName: "previewFileName"
                text: sheet.fileName
                font.pixelSize: 13
                font.weight: Font.DemiBold
                color: Theme.primaryText
                elide: Text.ElideMiddle
                Layout.fillWidth: true
            }
            Button {
                objectName: "previewDoneButton"
                text: "Done"
                highlighted: true
                onClicked: sheet.close()
            }
        }
        DetailDivider {}

        Loader {
            objectName: "previewContent"
            active: sheet.opened || sheet.visible
            Layout.fillWidth: true
            Layout.fillHeight: true
            sourceComponent: {
                switch (sheet.kind) {
                case FilePreview.Kind.image: return picture
                case FilePreview.Kind.markdown: return textView
                case FilePreview.Kind.text: return textView
                case FilePreview.Kind.pdf: return pdf
                default: return other
                }
            }
        }

        Component {
            id: picture
            Image {
                objectName: "previewImage"
                source: sheet.url
                fillMode: Image.PreserveAspectFit
                asynchronous: true
                autoTransform: true
            }
        }

        Component {
            id: textView
            ScrollView {
                objectName: "previewText"
                TextArea {
                    readOnly: true
                    selectByMouse: true
                    wrapMode: TextEdit.Wrap
                    textFormat: sheet.kind === FilePreview.Kind.markdown ? TextEdit.MarkdownText : TextEdit.PlainText
                    text: FilePreview.text(sheet.url)
                    font.family: sheet.kind === FilePreview.Kind.markdown ? Qt.application.font.family : "monospace"
                    font.pixelSize: 13
                    color: Theme.primaryText
                    padding: 16
                    background: null
                }
            }
        }

        Component {
            id: pdf
            PdfMultiPageView {
                objectName: "previewPdf"
                document: PdfDocument {
                    source: sheet.url
                }
            }
        }

        Component {
            id: other
            Item {
                objectName: "previewOther"
                ColumnLayout {
                    anchors.centerIn: parent
                    spacing: 12
                    Symbol {
                        name: "doc"
                        size: 48
                        color: Theme.secondaryText
                        Layout.alignment: Qt.AlignHCenter
                    }
                    Label {
                        text: sheet.fileName
                        color: Theme.primaryText
                        font.pixelSize: 13
                        Layout.alignment: Qt.AlignHCenter
                    }
                    Button {
                        objectName: "previewOpenButton"
                        text: "Open"
                        onClicked: Qt.openUrlExternally(sheet.url)
                        Layout.alignment: Qt.AlignHCenter
                    }
                }
            }
        }
    }

    Shortcut {
        enabled: sheet.opened
        sequences: ["Return", "Enter"]
        onActivated: sheet.close()
    }
}
