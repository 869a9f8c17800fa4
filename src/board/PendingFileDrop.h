#pragma once

#include <QStringList>
#include <QUrl>

// Files dropped on the board, waiting for the user to choose the folder around them, whose card
// will list them in its checklist.
struct PendingFileDrop {
    QUrl folder;
    QStringList fileNames;

    bool operator==(const PendingFileDrop &) const = default;
};
