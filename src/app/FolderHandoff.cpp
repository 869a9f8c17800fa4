#include "FolderHandoff.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

FolderHandoff FolderHandoff::fromArguments(const QStringList &paths, const QString &workingDirectory)
{
    FolderHandoff handoff;
    bool readAny = false;
    for (const QString &path : paths) {
        // A "file://" URL, as desktop launchers pass it, or a plain path.
        const QUrl url = QUrl::fromUserInput(path, workingDirectory, QUrl::AssumeLocalFile);
        if (!url.isLocalFile() || path.isEmpty())
            continue;
        readAny = true;
        const QFileInfo info(url.toLocalFile());
        if (info.isDir())
            handoff.folders.append(QUrl::fromLocalFile(QDir::cleanPath(info.absoluteFilePath())));
    }
    if (handoff.folders.isEmpty()) {
        handoff.refusal = readAny ? u"Velto tracks folders, not files. Select a folder instead."_s
                                  : u"Velto could not read the selection."_s;
    }
    return handoff;
}
