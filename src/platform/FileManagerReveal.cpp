#include "FileManagerReveal.h"

#include "FolderPaths.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

void openEnclosingFolder(const QUrl &url)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(FolderPaths::parent(url.toLocalFile())));
}

} // namespace

void revealInFileManager(const QUrl &url)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        openEnclosingFolder(url);
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s,
                                                       u"/org/freedesktop/FileManager1"_s,
                                                       u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    call << QStringList{url.toString(QUrl::FullyEncoded)} << QString();
    // Asked without waiting: a file manager that has to be started first must not freeze the board.
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [url](QDBusPendingCallWatcher *done) {
        if (done->isError())
            openEnclosingFolder(url);
        done->deleteLater();
    });
}
