#pragma once

#include "Task.h"

#include <QDBusConnection>
#include <QDesktopServices>
#include <QUrl>

#include <functional>

// Opens a folder by whatever the desktop does with it; false when nothing took the request.
using OpenFolder = std::function<bool(const QUrl &)>;

// Shows a file or folder selected in the desktop's file manager, or, when no file manager answers
// on `bus`, opens the folder around it. True when either was taken up.
Task<bool> revealInFileManager(QUrl url, QDBusConnection bus = QDBusConnection::sessionBus(),
                               OpenFolder openFolder = &QDesktopServices::openUrl);
