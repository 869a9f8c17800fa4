#pragma once

#include "DatabaseChangeNotifier.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QUuid>

#include <functional>

// Runs the event loop until the condition holds, for five seconds at most; whether it holds.
inline bool waitFor(const std::function<bool()> &condition)
{
    QDeadlineTimer deadline(5000);
    while (!condition() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return condition();
}

// A change channel that no other test, and no running app, listens on.
inline DatabaseChangeNotifier freshChannel()
{
    return DatabaseChangeNotifier::forAppGroup(QStringLiteral("test.velto.")
                                               + QUuid::createUuid().toString(QUuid::WithoutBraces));
}

// Signals from one process arrive in the order they were sent, except on a connection that has
// not delivered one yet: its first few can come out of order. So a test drains once before it
// posts anything, and from then on, once a marker posted last on a channel of its own has come
// back, every earlier post has been delivered too, so a count can be checked without sleeping.
// False when the bus did not deliver the marker.
inline bool drainBus()
{
    const DatabaseChangeNotifier marker = freshChannel();
    bool arrived = false;
    const auto observation = marker.observe([&arrived] { arrived = true; });
    marker.post();
    return observation && waitFor([&arrived] { return arrived; });
}
