#include "FileManagerPlaces.h"

#include <QDir>
#include <QProcessEnvironment>

using namespace Qt::StringLiterals;

namespace {

QString extensionFolder()
{
    return u"nautilus-python/extensions"_s;
}

QString serviceMenusFolder()
{
    return u"kio/servicemenus"_s;
}

QStringList hostLibraryCandidates()
{
    QStringList candidates;
    const auto relative = u"nautilus/extensions-4/libnautilus-python.so"_s;
    // Debian puts it below the multiarch folder of the machine's architecture.
    const QDir lib(u"/usr/lib"_s);
    for (const QString &triplet : lib.entryList({u"*-linux-gnu*"_s}, QDir::Dirs | QDir::NoDotAndDotDot))
        candidates << lib.filePath(triplet + u'/' + relative);
    candidates << lib.filePath(relative) << u"/usr/lib64/"_s + relative;
    return candidates;
}

} // namespace

FileManagerPlaces FileManagerPlaces::ofThisProcess()
{
    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QString userData = environment.value(u"XDG_DATA_HOME"_s);
    if (!QDir::isAbsolutePath(userData))
        userData = QDir::homePath() + u"/.local/share"_s;
    QStringList systemData;
    for (const QString &folder : environment.value(u"XDG_DATA_DIRS"_s).split(u':', Qt::SkipEmptyParts)) {
        if (QDir::isAbsolutePath(folder))
            systemData << folder;
    }
    if (systemData.isEmpty())
        systemData = {u"/usr/local/share"_s, u"/usr/share"_s};
    return {userData, systemData, hostLibraryCandidates()};
}

QString FileManagerPlaces::extensionFileName()
{
    return u"velto_badges.py"_s;
}

QString FileManagerPlaces::filesScriptName()
{
    return u"Add to Velto Board"_s;
}

QString FileManagerPlaces::dolphinMenuName()
{
    return u"io.quillmere.Velto.AddToBoard.desktop"_s;
}

QString FileManagerPlaces::userExtensionFolder() const
{
    return userDataDirectory + u'/' + extensionFolder();
}

// Files reads scripts from the user's folder only; for everyone, the extension carries the entry.
QString FileManagerPlaces::userFilesScript() const
{
    return userDataDirectory + u"/nautilus/scripts/"_s + filesScriptName();
}

QString FileManagerPlaces::userDolphinMenu() const
{
    return userDataDirectory + u'/' + serviceMenusFolder() + u'/' + dolphinMenuName();
}

QStringList FileManagerPlaces::extensionPlaces() const
{
    QStringList places{userExtensionFolder() + u'/' + extensionFileName()};
    for (const QString &folder : systemDataDirectories)
        places << folder + u'/' + extensionFolder() + u'/' + extensionFileName();
    return places;
}

QStringList FileManagerPlaces::dolphinMenuPlaces() const
{
    QStringList places{userDolphinMenu()};
    for (const QString &folder : systemDataDirectories)
        places << folder + u'/' + serviceMenusFolder() + u'/' + dolphinMenuName();
    return places;
}
