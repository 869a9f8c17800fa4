#pragma once

#include "WorkingFile.h"

#include <QDateTime>
#include <QString>

#include <optional>

// The working file of one card as Velto last found it: its path, size and modification time,
// which decide whether the next reload reads it again, and what was read or why nothing was.
struct WorkingFileRead {
    QString path;
    qint64 size = 0;
    QDateTime modified;
    WorkingFile file;
    std::optional<QString> failure;

    bool operator==(const WorkingFileRead &) const = default;
};
