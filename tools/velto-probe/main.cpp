#include "AppGroupContainer.h"
#include "AppGroupSources.h"
#include "DatabaseChangeNotifier.h"
#include "VeltoError.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDateTime>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

void complain(const QString &text)
{
    QTextStream(stderr) << u"velto-probe: "_s << text << Qt::endl;
}

// Returns once the bus has answered a call sent after everything before it: by then a posted signal
// is in the bus's hands even if this process ends at once, and a new registration is in force.
void roundTripToBus(QDBusConnection &bus)
{
    bus.call(QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                            u"org.freedesktop.DBus"_s, u"GetId"_s));
}

// Local time with its offset, so that lines from machines or sessions in other zones compare.
QString timestamp()
{
    const QDateTime now = QDateTime::currentDateTime();
    return now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::ISODateWithMs);
}

int post(const DatabaseChangeNotifier &notifier, QDBusConnection &bus)
{
    notifier.post();
    roundTripToBus(bus);
    QTextStream(stdout) << timestamp() << u" posted "_s << notifier.name << Qt::endl;
    return 0;
}

int watch(const DatabaseChangeNotifier &notifier, QDBusConnection &bus, QCoreApplication &application)
{
    QTextStream out(stdout);
    const auto observation = notifier.observe([&out, &notifier] {
        out << timestamp() << u' ' << notifier.name << Qt::endl;
    });
    if (!observation) {
        complain(u"could not register for %1."_s.arg(notifier.name));
        return 1;
    }
    roundTripToBus(bus);
    QTextStream(stderr) << u"Watching "_s << notifier.name << u"; press Ctrl+C to stop."_s << Qt::endl;
    return application.exec();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"velto-probe"_s);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Watches or posts the notification that Velto sends on the session bus after each change to its "
        "database.\n\nRun \"velto-probe --watch\" in a terminal, then change something in Velto or press "
        "\"Post change notification\" in its diagnostics window: it prints a line each time."_s);
    parser.addHelpOption();
    const QCommandLineOption watchOption(u"watch"_s,
                                         u"Print the time and the channel of each notification until interrupted."_s);
    const QCommandLineOption postOption(u"post"_s, u"Post one notification, then exit."_s);
    parser.addOptions({watchOption, postOption});
    parser.process(application);

    if (parser.isSet(watchOption) == parser.isSet(postOption)) {
        complain(u"give exactly one of --watch and --post; see --help."_s);
        return 2;
    }

    DatabaseChangeNotifier notifier;
    try {
        notifier = DatabaseChangeNotifier::forAppGroup(
            AppGroupContainer::configuredIdentifier(AppGroupSources::ofThisProcess()));
    } catch (const VeltoError &failure) {
        complain(failure.text());
        return 1;
    }
    if (!notifier.busInterface()) {
        complain(u"%1 cannot be carried on the session bus."_s.arg(notifier.name));
        return 1;
    }
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        complain(u"there is no session bus."_s);
        return 1;
    }
    return parser.isSet(watchOption) ? watch(notifier, bus, application) : post(notifier, bus);
}
