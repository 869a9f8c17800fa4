#include "TimeAggregation.h"

#include <QHashFunctions>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace TimeAggregation {

namespace {

// A duration that is not finite comes from a broken clock upstream, not something to paper over.
qint64 wholeSeconds(double seconds)
{
    if (!std::isfinite(seconds))
        std::abort();
    return std::llround(seconds);
}

std::optional<QString> projectOf(const TimeSession &session, const ProjectByCard &projectByCard)
{
    return projectByCard.value(session.cardID, std::nullopt);
}

} // namespace

size_t qHash(const WeekKey &key, size_t seed)
{
    return qHashMulti(seed, key.weekStart.secondsSinceReferenceDate(), key.projectID.has_value(),
                      key.projectID.value_or(QString()));
}

QList<VeltoDate> weekStarts(VeltoDate now, int count, const WeekCalendar &calendar)
{
    Q_ASSERT(count >= 0);
    const auto current = calendar.week(now);
    QList<VeltoDate> starts;
    if (!current)
        return starts;
    for (int weeks = 1 - count; weeks <= 0; ++weeks) {
        if (const auto start = calendar.addingWeeks(weeks, current->start))
            starts.append(*start);
    }
    return starts;
}

QList<WeekSlice> weekSlices(VeltoDate start, VeltoDate end, const WeekCalendar &calendar)
{
    QList<WeekSlice> slices;
    VeltoDate cursor = start;
    for (int step = 0; step < 1000 && cursor < end; ++step) {
        const auto week = calendar.week(cursor);
        if (!week)
            break;
        const VeltoDate sliceEnd = week->end < end ? week->end : end;
        const double length = sliceEnd.secondsSinceReferenceDate() - cursor.secondsSinceReferenceDate();
        if (length > 0)
            slices.append({week->start, length});
        // A calendar that makes no progress must not hang the program.
        if (!(cursor < sliceEnd))
            break;
        cursor = sliceEnd;
    }
    return slices;
}

QList<WeeklyTotal> weeklyTotals(const QList<TimeSession> &sessions, const ProjectByCard &projectByCard,
                                VeltoDate now, int weekCount, const WeekCalendar &calendar)
{
    const auto current = calendar.week(now);
    const auto earliest = current ? calendar.addingWeeks(1 - weekCount, current->start) : std::nullopt;
    if (!earliest)
        return {};
    QHash<WeekKey, double> seconds;
    for (const TimeSession &session : sessions) {
        // A running session is counted once it ends; one that ended before the window has no
        // slice in it, and cutting years of history into weeks would only be thrown away.
        if (!session.endedAt || *session.endedAt <= *earliest)
            continue;
        const auto project = projectOf(session, projectByCard);
        for (const WeekSlice &slice : weekSlices(session.startedAt, *session.endedAt, calendar)) {
            if (slice.weekStart >= *earliest)
                seconds[WeekKey{slice.weekStart, project}] += slice.seconds;
        }
    }
    QList<WeeklyTotal> totals;
    totals.reserve(seconds.size());
    for (auto entry = seconds.cbegin(); entry != seconds.cend(); ++entry)
        totals.append({entry.key().weekStart, entry.key().projectID, entry.value()});
    std::ranges::sort(totals, [](const WeeklyTotal &a, const WeeklyTotal &b) {
        if (a.weekStart != b.weekStart)
            return a.weekStart < b.weekStart;
        return a.projectID.value_or(QString()) < b.projectID.value_or(QString());
    });
    return totals;
}

std::map<std::optional<QString>, double> projectTotals(const QList<TimeSession> &sessions,
                                                       const ProjectByCard &projectByCard)
{
    // Summed per card first: cards are few beside their sessions, and a card's project is then
    // looked up once rather than for every session.
    QHash<QString, double> byCard;
    for (const TimeSession &session : sessions) {
        if (!session.endedAt)
            continue;
        const double length =
            session.endedAt->secondsSinceReferenceDate() - session.startedAt.secondsSinceReferenceDate();
        if (length > 0)
            byCard[session.cardID] += length;
    }
    std::map<std::optional<QString>, double> totals;
    for (auto card = byCard.cbegin(); card != byCard.cend(); ++card)
        totals[projectByCard.value(card.key(), std::nullopt)] += card.value();
    return totals;
}

std::map<VeltoDate, int> completionsByWeek(const QList<Card> &cards, VeltoDate now, int weekCount,
                                           const WeekCalendar &calendar)
{
    const QList<VeltoDate> weeks = weekStarts(now, weekCount, calendar);
    std::map<VeltoDate, int> counts;
    for (const Card &card : cards) {
        if (card.status != CardStatus::complete)
            continue;
        // The last move into Complete is the one that counts; earlier ones left no trace.
        const auto week = calendar.week(card.statusChangedAt);
        if (week && weeks.contains(week->start))
            ++counts[week->start];
    }
    return counts;
}

QString durationText(double seconds)
{
    const qint64 total = wholeSeconds(seconds);
    if (total < 1)
        return u"—"_s;
    if (total < 60)
        return u"%1s"_s.arg(total);
    if (total < 3600)
        return u"%1m"_s.arg(total / 60);
    const qint64 hours = total / 3600;
    const qint64 rest = total % 3600;
    if (rest < 60)
        return u"%1h"_s.arg(hours);
    return u"%1h %2m"_s.arg(hours).arg(rest / 60);
}

QString clockText(double seconds)
{
    const qint64 total = std::max<qint64>(0, wholeSeconds(seconds));
    const qint64 hours = total / 3600;
    const qint64 minutes = total % 3600 / 60;
    const qint64 rest = total % 60;
    if (hours > 0)
        return u"%1:%2:%3"_s.arg(hours).arg(minutes, 2, 10, QLatin1Char('0')).arg(rest, 2, 10, QLatin1Char('0'));
    return u"%1:%2"_s.arg(minutes).arg(rest, 2, 10, QLatin1Char('0'));
}

bool metTarget(const TimeSession &session)
{
    if (!session.endedAt || !session.targetSeconds)
        return false;
    return session.endedAt->secondsSinceReferenceDate() - session.startedAt.secondsSinceReferenceDate() >=
           double(*session.targetSeconds);
}

} // namespace TimeAggregation
