#pragma once

#include "PlatformText.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

// The texts of the views that name a place or a key of the desktop, read from the one table of
// such texts.
class PlatformWords : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString openInFileManager READ openInFileManager CONSTANT)
    Q_PROPERTY(QString revealInFileManager READ revealInFileManager CONSTANT)
    Q_PROPERTY(QString saveShortcut READ saveShortcut CONSTANT)
    Q_PROPERTY(QString emptyColumnHint READ emptyColumnHint CONSTANT)
    Q_PROPERTY(QString addFolderHelp READ addFolderHelp CONSTANT)
    Q_PROPERTY(QString fileManagerSection READ fileManagerSection CONSTANT)
    Q_PROPERTY(QString tagMirrorLabel READ tagMirrorLabel CONSTANT)
    Q_PROPERTY(QString badgeLabel READ badgeLabel CONSTANT)
    Q_PROPERTY(QString badgeExplanation READ badgeExplanation CONSTANT)
    Q_PROPERTY(QString extensionOn READ extensionOn CONSTANT)
    Q_PROPERTY(QString extensionOff READ extensionOff CONSTANT)
    Q_PROPERTY(QString extensionOnHelp READ extensionOnHelp CONSTANT)
    Q_PROPERTY(QString extensionOffHelp READ extensionOffHelp CONSTANT)
    Q_PROPERTY(QString actionsHelp READ actionsHelp CONSTANT)
    Q_PROPERTY(QString actionsInstallHelp READ actionsInstallHelp CONSTANT)
    Q_PROPERTY(QString installActions READ installActions CONSTANT)
    Q_PROPERTY(QString actionsInstalled READ actionsInstalled CONSTANT)
    Q_PROPERTY(QString translocatedTitle READ translocatedTitle CONSTANT)
    Q_PROPERTY(QString translocatedText READ translocatedText CONSTANT)
    Q_PROPERTY(QString readOnlyVolumeTitle READ readOnlyVolumeTitle CONSTANT)
    Q_PROPERTY(QString probeInstructions READ probeInstructions CONSTANT)

public:
    using QObject::QObject;

    [[nodiscard]] static QString openInFileManager();
    [[nodiscard]] static QString revealInFileManager();
    [[nodiscard]] static QString saveShortcut();
    [[nodiscard]] static QString emptyColumnHint();
    [[nodiscard]] static QString addFolderHelp();
    [[nodiscard]] static QString fileManagerSection() { return PlatformText::fileManagerSection(); }
    [[nodiscard]] static QString tagMirrorLabel() { return PlatformText::tagMirrorLabel(); }
    [[nodiscard]] static QString badgeLabel() { return PlatformText::badgeLabel(); }
    [[nodiscard]] static QString badgeExplanation() { return PlatformText::badgeExplanation(); }
    [[nodiscard]] static QString extensionOn() { return PlatformText::extensionOn(); }
    [[nodiscard]] static QString extensionOff() { return PlatformText::extensionOff(); }
    [[nodiscard]] static QString extensionOnHelp() { return PlatformText::extensionOnHelp(); }
    [[nodiscard]] static QString extensionOffHelp() { return PlatformText::extensionOffHelp(); }
    [[nodiscard]] static QString actionsHelp() { return PlatformText::actionsHelp(); }
    [[nodiscard]] static QString actionsInstallHelp() { return PlatformText::actionsInstallHelp(); }
    [[nodiscard]] static QString installActions() { return PlatformText::installActions(); }
    [[nodiscard]] static QString actionsInstalled() { return PlatformText::actionsInstalled(); }
    [[nodiscard]] static QString translocatedTitle() { return PlatformText::translocatedTitle(); }
    [[nodiscard]] static QString translocatedText() { return PlatformText::translocatedText(); }
    [[nodiscard]] static QString readOnlyVolumeTitle() { return PlatformText::readOnlyVolumeTitle(); }
    Q_INVOKABLE [[nodiscard]] static QString readOnlyVolumeText(const QString &dataFolder)
    {
        return PlatformText::readOnlyVolumeText(dataFolder);
    }
    [[nodiscard]] static QString probeInstructions();
};
