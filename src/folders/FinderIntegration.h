#pragma once

#include "FileManagerPlaces.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

// What the settings tell about Velto's place in the file managers: whether the badge extension
// can run in Files, and whether "Add to Velto Board" is offered in Files and Dolphin. It installs
// that entry for the user's account when no package did.
class FinderIntegration : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isExtensionEnabled READ isExtensionEnabled NOTIFY isExtensionEnabledChanged)
    Q_PROPERTY(bool areActionsInstalled READ areActionsInstalled NOTIFY areActionsInstalledChanged)
    Q_PROPERTY(QString actionsError READ actionsError NOTIFY actionsErrorChanged)
    Q_PROPERTY(QString extensionError READ extensionError NOTIFY extensionErrorChanged)

public:
    // The places of this process, and this very executable for the entries it installs.
    explicit FinderIntegration(QObject *parent = nullptr);
    FinderIntegration(FileManagerPlaces places, QString executable, QObject *parent = nullptr);

    [[nodiscard]] bool isExtensionEnabled() const { return m_isExtensionEnabled; }
    [[nodiscard]] bool areActionsInstalled() const { return m_areActionsInstalled; }
    [[nodiscard]] const QString &actionsError() const { return m_actionsError; }
    [[nodiscard]] const QString &extensionError() const { return m_extensionError; }

    // Looks again; the user may have installed something while away from Velto.
    Q_INVOKABLE void refresh();
    // Opens the folder the extension is in, or the user's own extensions folder.
    Q_INVOKABLE void openExtensionSettings() const;
    // Writes the Files script and the Dolphin service menu into the user's data directory, both
    // calling this executable with the selected paths.
    Q_INVOKABLE void installActions();
    // Copies the badge extension into the user's extensions folder of Files, its "Add to Velto
    // Board" calling this executable. Files loads it when it next starts.
    Q_INVOKABLE void installExtension();

signals:
    void isExtensionEnabledChanged();
    void areActionsInstalledChanged();
    void actionsErrorChanged();
    void extensionErrorChanged();

private:
    void setActionsError(const QString &text);
    void setExtensionError(const QString &text);
    // Throws nothing; answers why the file could not be written, or nothing.
    [[nodiscard]] static QString writeExecutable(const QString &path, const QByteArray &contents);

    FileManagerPlaces m_places;
    QString m_executable;
    bool m_isExtensionEnabled = false;
    bool m_areActionsInstalled = false;
    QString m_actionsError;
    QString m_extensionError;
};
