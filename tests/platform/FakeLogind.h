#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QStringList>

#include <gtest/gtest.h>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <vector>

using namespace Qt::StringLiterals;

// logind's manager on the private session bus: it hands out one end of a socket pair for each
// lock and keeps the other, so it sees a lock let go when that end hangs up.
class FakeLogind : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    FakeLogind() : m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"fake-logind"_s))
    {
        EXPECT_TRUE(m_connection.registerObject(u"/org/freedesktop/login1"_s, this, QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(m_connection.registerService(u"org.freedesktop.login1"_s));
    }
    ~FakeLogind() override
    {
        m_connection.unregisterService(u"org.freedesktop.login1"_s);
        QDBusConnection::disconnectFromBus(m_connection.name());
        for (const int kept : m_keptEnds)
            ::close(kept);
    }

    QStringList requests; // "what/who/mode" of each Inhibit call

    // The locks handed out whose other end is still open somewhere.
    [[nodiscard]] int heldLocks() const
    {
        int held = 0;
        for (const int kept : m_keptEnds) {
            pollfd probe{kept, POLLIN, 0};
            if (::poll(&probe, 1, 0) == 0 || (probe.revents & POLLHUP) == 0)
                ++held;
        }
        return held;
    }

    void announceSleep(bool sleeping)
    {
        QDBusMessage signal = QDBusMessage::createSignal(u"/org/freedesktop/login1"_s,
                                                         u"org.freedesktop.login1.Manager"_s, u"PrepareForSleep"_s);
        signal << sleeping;
        EXPECT_TRUE(m_connection.send(signal));
    }

public slots:
    QDBusUnixFileDescriptor Inhibit(const QString &what, const QString &who, const QString &, const QString &mode)
    {
        requests.append(what + u'/' + who + u'/' + mode);
        int ends[2];
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
            return {};
        m_keptEnds.push_back(ends[0]);
        // The descriptor object holds its own copy; ours goes.
        QDBusUnixFileDescriptor handedOut(ends[1]);
        ::close(ends[1]);
        return handedOut;
    }

private:
    QDBusConnection m_connection;
    std::vector<int> m_keptEnds;
};
