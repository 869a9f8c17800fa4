#include "FileManagerReveal.h"

#include "BusCall.h"
#include "FolderPaths.h"

#include <QDBusMessage>
#include <QStringList>

using namespace Qt::StringLiterals;

Task<bool> revealInFileManager(QUrl url, QDBusConnection bus, OpenFolder openFolder)
{
    if (bus.isConnected()) {
        QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s,
                                                           u"/org/freedesktop/FileManager1"_s,
                                                           u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
        call << QStringList{url.toString(QUrl::FullyEncoded)} << QString();
        // Asked without waiting: a file manager that has to be started first must not freeze the board.
        const QDBusMessage reply = co_await callOnBus(bus, call);
        if (reply.type() == QDBusMessage::ReplyMessage)
            co_return true;
    }
    co_return openFolder(QUrl::fromLocalFile(FolderPaths::parent(url.toLocalFile())));
}
