import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Velto

// In place of the board when what Velto saves would not last: what is wrong and what to do.
// There is no way past it but starting Velto from another place.
Item {
    id: gate
    required property int verdict
    required property string dataFolder
    signal revealRequested()

    implicitWidth: 900
    implicitHeight: 460

    readonly property string title: {
        switch (verdict) {
        case InstallLocation.Translocated: return PlatformWords.translocatedTitle
        case InstallLocation.ReadOnlyVolume: return PlatformWords.readOnlyVolumeTitle
        default: return ""
        }
    }
    readonly property string explanation: {
        switch (verdict) {
        case InstallLocation.Translocated: return PlatformWords.translocatedText
        case InstallLocation.ReadOnlyVolume: return PlatformWords.readOnlyVolumeText(dataFolder)
        default: return ""
        }
    }

    ColumnLayout {
        anchors.centerIn: parent
        width: Math.min(parent.width - 80, 560)
        spacing: Theme.spacing

        Symbol {
            name: "arrow.down.app"
            size: 48
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            objectName: "gateTitle"
            text: gate.title
            font.pixelSize: Theme.titleSize
            font.bold: true
            color: Theme.primaryText
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        Label {
            objectName: "gateText"
            text: gate.explanation
            color: Theme.secondaryText
            font.pixelSize: Theme.bodySize
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: Theme.spacing
            Layout.alignment: Qt.AlignHCenter
            Button {
                objectName: "gateRevealButton"
                text: PlatformWords.revealInFileManager
                onClicked: gate.revealRequested()
            }
            Button {
                objectName: "gateQuitButton"
                text: "Quit Velto"
                highlighted: true
                focus: true
                onClicked: Qt.quit()
                Keys.onReturnPressed: clicked()
                Keys.onEnterPressed: clicked()
            }
        }
    }
}
