#pragma once

#include <QString>
#include <QStringList>

// Where the file managers look for what Velto adds to them: the badge extension of Files, the
// script that Files lists under Scripts, and the service menu that Dolphin lists under Actions.
// Tests hand in their own.
struct FileManagerPlaces {
    QString userDataDirectory;     // XDG_DATA_HOME, or ~/.local/share
    QStringList systemDataDirectories; // XDG_DATA_DIRS
    // Where the python3-nautilus package keeps the library that lets Files load extensions.
    QStringList extensionHostLibraries;

    bool operator==(const FileManagerPlaces &) const = default;

    static FileManagerPlaces ofThisProcess();

    static QString extensionFileName();
    static QString filesScriptName();
    static QString dolphinMenuName();

    [[nodiscard]] QString userExtensionFolder() const;
    [[nodiscard]] QString userFilesScript() const;
    [[nodiscard]] QString userDolphinMenu() const;
    // Every place where the file may be, the user's own first.
    [[nodiscard]] QStringList extensionPlaces() const;
    [[nodiscard]] QStringList dolphinMenuPlaces() const;
};
