#include "SleepInhibitor.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString service = u"org.freedesktop.login1"_s;
const QString path = u"/org/freedesktop/login1"_s;
const QString interface = u"org.freedesktop.login1.Manager"_s;

} // namespace

SleepInhibitor::SleepInhibitor(QDBusConnection bus, BeforeSleep beforeSleep, QObject *parent)
    : QObject(parent), m_bus(std::move(bus)), m_beforeSleep(std::move(beforeSleep))
{
    if (!m_bus.isConnected())
        return;
    m_bus.connect(service, path, interface, u"PrepareForSleep"_s, this, SLOT(prepareForSleep(bool)));
    takeLock();
}

SleepInhibitor::~SleepInhibitor() = default;

void SleepInhibitor::takeLock()
{
    if (m_lock || m_isAsking)
        return;
    m_isAsking = true;
    auto call = QDBusMessage::createMethodCall(service, path, interface, u"Inhibit"_s);
    call << u"sleep"_s << u"Velto"_s << u"Closing the running session before the machine sleeps"_s << u"delay"_s;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        m_isAsking = false;
        const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *watcher;
        // A lock that arrives while the machine goes to sleep would only hold the sleep back.
        if (reply.isValid() && reply.value().isValid() && !m_isSleeping)
            setLock(reply.value());
    });
}

void SleepInhibitor::prepareForSleep(bool sleeping)
{
    m_isSleeping = sleeping;
    if (sleeping)
        releaseAfter(QPointer<SleepInhibitor>(this), m_beforeSleep);
    else
        takeLock();
}

Task<> SleepInhibitor::releaseAfter(QPointer<SleepInhibitor> self, BeforeSleep beforeSleep)
{
    co_await beforeSleep();
    if (self && self->m_isSleeping)
        self->setLock(std::nullopt);
}

void SleepInhibitor::setLock(std::optional<QDBusUnixFileDescriptor> lock)
{
    if (m_lock.has_value() == lock.has_value())
        return;
    // Dropping the last copy of the descriptor closes it, which is what lets logind go on.
    m_lock = std::move(lock);
    emit holdsLockChanged();
}
