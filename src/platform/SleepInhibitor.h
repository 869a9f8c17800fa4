#pragma once

// Qt's headers first: moc cannot read <coroutine> before it has read theirs.
#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QPointer>

#include "Task.h"

#include <functional>
#include <optional>

// Holds a delay lock on system sleep from logind, so that work that must end before the machine
// sleeps gets its moment: when logind announces the sleep, `beforeSleep` runs and the lock is let
// go once it has finished; after the wake the lock is taken again. Without a bus or without
// logind, nothing happens and nothing fails.
class SleepInhibitor : public QObject {
    Q_OBJECT

public:
    using BeforeSleep = std::function<Task<>()>;

    SleepInhibitor(QDBusConnection bus, BeforeSleep beforeSleep, QObject *parent = nullptr);
    ~SleepInhibitor() override;

    [[nodiscard]] bool holdsLock() const { return m_lock.has_value(); }

signals:
    void holdsLockChanged();

private slots:
    void prepareForSleep(bool sleeping);

private:
    static Task<> releaseAfter(QPointer<SleepInhibitor> self, BeforeSleep beforeSleep);
    void takeLock();
    void setLock(std::optional<QDBusUnixFileDescriptor> lock);

    QDBusConnection m_bus;
    BeforeSleep m_beforeSleep;
    std::optional<QDBusUnixFileDescriptor> m_lock;
    bool m_isAsking = false;
    bool m_isSleeping = false;
};
