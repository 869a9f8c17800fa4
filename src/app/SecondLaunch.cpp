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

std::optional<QString> SecondLaunch::handOver(QDBusConnection bus, const QString &identifier,
                                              const QStringList &arguments, const QString &workingDirectory)
{
    const QString name = BusName::fromIdentifier(identifier);
    QDBusMessage call = QDBusMessage::createMethodCall(name, BusName::objectPath(name),
                                                       ApplicationBusService::interfaceName(),
                                                       arguments.isEmpty() ? u"Activate"_s : u"Open"_s);
    if (!arguments.isEmpty())
        call << urisOf(arguments, workingDirectory);
    call << QVariantMap();
    // The event loop runs while waiting, so a Velto in this very process could answer too.
    if (bus.isConnected() && bus.call(call, QDBus::BlockWithGui, answerTimeout).type() == QDBusMessage::ReplyMessage)
        return std::nullopt;
    return u"Velto is already running but did not answer, so nothing was handed to it."_s;
}
