#include "BusCall.h"

#include "Later.h"

#include <QDBusPendingCallWatcher>

Task<QDBusMessage> callOnBus(QDBusConnection bus, QDBusMessage call, int timeout)
{
    Later<QDBusMessage> reply;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, timeout));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [reply](QDBusPendingCallWatcher *done) {
        done->deleteLater();
        reply.deliver(done->reply());
    });
    co_return co_await reply;
}
