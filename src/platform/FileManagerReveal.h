#pragma once

#include <QUrl>

// Shows a file or folder selected in the desktop's file manager, or, when no file manager answers
// on the session bus, opens the folder around it.
void revealInFileManager(const QUrl &url);
