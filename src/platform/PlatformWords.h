#pragma once

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
    Q_PROPERTY(QString probeInstructions READ probeInstructions CONSTANT)

public:
    using QObject::QObject;

    [[nodiscard]] static QString openInFileManager();
    [[nodiscard]] static QString revealInFileManager();
    [[nodiscard]] static QString saveShortcut();
    [[nodiscard]] static QString emptyColumnHint();
    [[nodiscard]] static QString addFolderHelp();
    [[nodiscard]] static QString probeInstructions();
};
