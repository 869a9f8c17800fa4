#include "PortalFolderChooser.h"

#include "BusCall.h"
#include "Later.h"
#include "PortalRequest.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QRandomGenerator>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString chooserInterface = u"org.freedesktop.portal.FileChooser"_s;

// How the user ended the chooser; any other code means it went away without a choice.
constexpr uint responseSuccess = 0;
constexpr uint responseEnded = 2;

struct Response {
    uint code = 0;
    QVariantMap results;
};

QDBusMessage versionQuery()
{
    QDBusMessage query = QDBusMessage::createMethodCall(portalService, portalPath,
                                                        u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    query << chooserInterface << u"version"_s;
    return query;
}

uint versionIn(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage)
        return 0;
    return reply.arguments().value(0).value<QDBusVariant>().variant().toUInt();
}

QList<QUrl> urlsIn(const QVariantMap &results)
{
    QList<QUrl> urls;
    for (const QString &uri : results.value(u"uris"_s).toStringList())
        urls.append(QUrl(uri));
    return urls;
}

} // namespace

QVariantMap PortalFolderChooser::options(const FolderPickerRequest &request, const QString &handleToken)
{
    QVariantMap options{
        {u"handle_token"_s, handleToken},
        {u"accept_label"_s, request.prompt},
        {u"directory"_s, true},
        {u"multiple"_s, request.allowsMultiple},
    };
    // The portal reads the folder as a byte string that ends in a zero byte.
    if (request.directory)
        options.insert(u"current_folder"_s, QByteArray(request.directory->toLocalFile().toUtf8() + '\0'));
    return options;
}

Task<std::optional<QList<QUrl>>> PortalFolderChooser::choose(QDBusConnection bus, FolderPickerRequest question,
                                                             QString parentWindow)
{
    if (!bus.isConnected())
        co_return std::nullopt;
    // An older chooser ignores the wish for folders and would hand back files.
    const QDBusMessage version = co_await callOnBus(bus, versionQuery());
    if (versionIn(version) < firstVersionWithFolders)
        co_return std::nullopt;

    const QString token = u"velto_"_s + QString::number(QRandomGenerator::global()->generate());
    Later<Response> answer;
    PortalRequest request(bus, [answer](uint code, const QVariantMap &results) { answer.deliver({code, results}); });
    const QString expectedPath = PortalRequest::pathFor(bus, token);
    request.listen(expectedPath);
    // A portal that goes away while the chooser is up will never answer; that ends the question.
    QDBusServiceWatcher portalGone(portalService, bus, QDBusServiceWatcher::WatchForUnregistration);
    QObject::connect(&portalGone, &QDBusServiceWatcher::serviceUnregistered, &request,
                     [answer] { answer.deliver({responseEnded, {}}); });

    QDBusMessage call = QDBusMessage::createMethodCall(portalService, portalPath, chooserInterface, u"OpenFile"_s);
    // The chooser has no line for a message beneath its title, so the message is the title.
    call << parentWindow << question.message << options(question, token);
    const QDBusMessage reply = co_await callOnBus(bus, call);
    if (reply.type() != QDBusMessage::ReplyMessage)
        co_return std::nullopt;
    // A portal that does not follow the token names its request itself.
    if (const QString handle = reply.arguments().value(0).value<QDBusObjectPath>().path(); handle != expectedPath)
        request.listen(handle);

    const Response response = co_await answer;
    if (response.code != responseSuccess)
        co_return QList<QUrl>{};
    co_return urlsIn(response.results);
}
