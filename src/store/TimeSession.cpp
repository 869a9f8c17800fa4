#include "TimeSession.h"

#include "RawValueLookup.h"
#include "RepositoryError.h"
#include "RowReading.h"
#include "SQLiteStatement.h"

using namespace Qt::StringLiterals;

std::optional<TimeSession::Source> sourceFromRawValue(QAnyStringView raw)
{
    return caseWithRawValue<TimeSession::Source>(
        {TimeSession::Source::manual, TimeSession::Source::automatic}, raw);
}

QString rawValue(TimeSession::Source source)
{
    switch (source) {
    case TimeSession::Source::manual: return u"manual"_s;
    case TimeSession::Source::automatic: return u"auto"_s;
    }
    Q_UNREACHABLE();
}

QString sessionColumns()
{
    return u"id, card_id, started_at, ended_at, source, confidence, note, target_seconds, mood"_s;
}

TimeSession sessionFromRow(const SQLiteStatement &row)
{
    TimeSession session;
    session.id = row.text(0);

    // The vocabulary words are matched where SQLite holds them: analytics reads every session.
    const auto source = row.utf8(4);
    const auto knownSource = source ? sourceFromRawValue(*source) : std::nullopt;
    if (!knownSource)
        throw RepositoryError(RepositoryError::MalformedRow{
            u"time_sessions"_s, session.id, u"unknown source '%1'"_s.arg(RowReading::textOrNull(source))});
    session.source = *knownSource;

    session.cardID = row.text(1);
    session.startedAt = RowReading::date(row, 2);
    session.endedAt = RowReading::optionalDate(row, 3);
    session.confidence = row.real(5);
    session.note = row.optionalText(6);
    session.targetSeconds = row.optionalInt64(7);
    const auto mood = row.utf8(8);
    session.mood = mood ? moodFromRawValue(*mood) : std::nullopt;
    return session;
}
