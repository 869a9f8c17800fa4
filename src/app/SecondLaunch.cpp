#include "SecondLaunch.h"

#include "ApplicationBusService.h"
#include "BusName.h"

#include <QDBusMessage>
#include <QUrl>
#include <QVariantMap>

using namespace Qt::StringLiterals;

QStringList SecondLaunch::urisOf(const QStringList &arguments, const QString &workingDirectory)
{
    QStringList uris;
    for (const QString &argument : arguments)
        uris.append(QUrl::fromUserInput(argument, workingDirectory, QUrl::AssumeLocalFile).toString(QUrl::FullyEncoded));
    return uris;
}

namespace {

std::optional<QString> deliver(QDBusConnection bus, const QString &identifier, const QString &method,
                               const QVariantList &arguments)
{
    const QString name = BusName::fromIdentifier(identifier);
    QDBusMessage call = QDBusMessage::createMethodCall(name, BusName::objectPath(name),
                                                       ApplicationBusService::interfaceName(), method);
    call.setArguments(arguments);
    // The event loop runs while waiting, so a Velto in this very process could answer too.
    if (bus.isConnected() &&
        bus.call(call, QDBus::BlockWithGui, SecondLaunch::answerTimeout).type() == QDBusMessage::ReplyMessage)
        return std::nullopt;
    return u"Velto is already running but did not answer, so nothing was handed to it."_s;
}

} // namespace

std::optional<QString> SecondLaunch::handOver(QDBusConnection bus, const QString &identifier,
                                              const QStringList &arguments, const QString &workingDirectory)
{
    if (arguments.isEmpty())
        return deliver(std::move(bus), identifier, u"Activate"_s, {QVariantMap()});
    return deliver(std::move(bus), identifier, u"Open"_s, {urisOf(arguments, workingDirectory), QVariantMap()});
}

std::optional<QString> SecondLaunch::activateAction(QDBusConnection bus, const QString &identifier,
                                                    const QString &action)
{
    return deliver(std::move(bus), identifier, u"ActivateAction"_s,
                   {action, QVariant::fromValue(QVariantList()), QVariantMap()});
}
