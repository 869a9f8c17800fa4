#pragma once

#include "Task.h"

#include <QDBusConnection>
#include <QDBusMessage>

// Sends a method call and resumes with its reply, or the error that stands for it, through the
// event loop; nothing waits on the bus meanwhile. `timeout` is in milliseconds, -1 the bus's own.
Task<QDBusMessage> callOnBus(QDBusConnection bus, QDBusMessage call, int timeout = -1);
