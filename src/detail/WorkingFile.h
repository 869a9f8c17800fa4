#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// What Velto reads of the notes an agent keeps in `velto.md` at the root of a card's folder: the
// checkboxes that are top-level bullets, and the dated bullets under `## Log`. Velto never writes
// the file; it only reads these two things back.
struct WorkingFile {
    struct Checkbox {
        QString text;
        bool done = false;
        bool operator==(const Checkbox &) const = default;
    };
    struct LogEntry {
        QString date;
        QString text;
        bool operator==(const LogEntry &) const = default;
    };

    // Larger files are not read at all, so a stray dump cannot stall a reload.
    static constexpr qint64 sizeLimit = 1024 * 1024;
    static constexpr QLatin1StringView fileName{"velto.md"};

    QList<Checkbox> tasks;
    // In the order of the file, which the agent is asked to keep newest last.
    QList<LogEntry> log;

    // Throws WorkingFileError for a file over the size limit or one that is not UTF-8 text.
    [[nodiscard]] static WorkingFile parse(const QByteArray &bytes);

    [[nodiscard]] qsizetype doneCount() const;

    bool operator==(const WorkingFile &) const = default;
};
