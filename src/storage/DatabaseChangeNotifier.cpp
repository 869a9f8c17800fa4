#include "DatabaseChangeNotifier.h"

#include "BusName.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The bus allows these names no longer than this.
constexpr qsizetype maximumInterfaceLength = 255;

// Hands each delivery to the handler on the thread that registered it.
class ChangeReceiver : public QObject {
    Q_OBJECT

public:
    explicit ChangeReceiver(std::function<void()> handler) : m_handler(std::move(handler)) {}

public slots:
    void deliver() { m_handler(); }

private:
    std::function<void()> m_handler;
};

} // namespace

DatabaseChangeNotifier DatabaseChangeNotifier::forAppGroup(const QString &identifier)
{
    return {identifier + u".databaseDidChange"_s};
}

QString DatabaseChangeNotifier::objectPath()
{
    return u"/io/quillmere/Velto"_s;
}

std::optional<QString> DatabaseChangeNotifier::busInterface() const
{
    const QStringList elements = name.left(std::max<qsizetype>(name.lastIndexOf(u'.'), 0)).split(u'.');
    if (elements.size() < 2)
        return std::nullopt;
    QStringList valid;
    for (const QString &element : elements)
        valid.append(BusName::validElement(element));
    QString interface = valid.join(u'.');
    if (interface.size() > maximumInterfaceLength)
        return std::nullopt;
    return interface;
}

QString DatabaseChangeNotifier::busMember() const
{
    return BusName::validElement(name.mid(name.lastIndexOf(u'.') + 1));
}

void DatabaseChangeNotifier::post() const
{
    const auto interface = busInterface();
    if (!interface)
        return;
    // Since Qt 6 the connection lives on a thread of its own: send() only hands the message over
    // to it, so a database worker can post without waiting on the bus.
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected())
        bus.send(QDBusMessage::createSignal(objectPath(), *interface, busMember()));
}

std::shared_ptr<DatabaseChangeNotifier::Observation> DatabaseChangeNotifier::observe(std::function<void()> handler) const
{
    const auto interface = busInterface();
    if (!interface)
        return nullptr;
    auto receiver = std::make_unique<ChangeReceiver>(std::move(handler));
    // An empty service and path: the signal comes from whichever process posts, under no bus name.
    if (!QDBusConnection::sessionBus().connect(QString(), QString(), *interface, busMember(), receiver.get(),
                                               SLOT(deliver())))
        return nullptr;
    return std::shared_ptr<Observation>(new Observation(*interface, busMember(), std::move(receiver)));
}

DatabaseChangeNotifier::Observation::Observation(QString interface, QString member, std::unique_ptr<QObject> receiver)
    : m_interface(std::move(interface)), m_member(std::move(member)), m_receiver(std::move(receiver))
{
}

DatabaseChangeNotifier::Observation::~Observation()
{
    // Deleting the receiver right away, not later, also discards a delivery already queued for it.
    QDBusConnection::sessionBus().disconnect(QString(), QString(), m_interface, m_member, m_receiver.get(),
                                             SLOT(deliver()));
}

#include "DatabaseChangeNotifier.moc"
