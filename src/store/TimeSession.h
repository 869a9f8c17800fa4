#pragma once

#include "Mood.h"
#include "VeltoDate.h"

#include <QString>

#include <optional>

class SQLiteStatement;

// One stretch of tracked time on a card; it runs while `endedAt` is absent.
struct TimeSession {
    // The stored words differ from the case names: `automatic` is stored as "auto".
    enum class Source { manual, automatic };

    QString id;
    QString cardID;
    VeltoDate startedAt;
    std::optional<VeltoDate> endedAt;
    Source source = Source::manual;
    double confidence = 1.0;
    std::optional<QString> note;
    std::optional<qint64> targetSeconds;
    std::optional<Mood> mood;

    bool operator==(const TimeSession &) const = default;
};

// Every field can be moved by copying its bytes, so a list of a hundred thousand sessions grows
// without copying each one.
Q_DECLARE_TYPEINFO(TimeSession, Q_RELOCATABLE_TYPE);

[[nodiscard]] std::optional<TimeSession::Source> sourceFromRawValue(QAnyStringView raw);
[[nodiscard]] QString rawValue(TimeSession::Source source);

// The columns every SELECT and the INSERT on `time_sessions` name, in the order `sessionFromRow`
// reads them.
[[nodiscard]] QString sessionColumns();

// The session on the statement's current row; throws RepositoryError for an unknown source. An
// unknown mood is dropped instead, since a rating is not worth failing the whole list for.
[[nodiscard]] TimeSession sessionFromRow(const SQLiteStatement &row);
