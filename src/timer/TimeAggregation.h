#pragma once

#include "Card.h"
#include "TimeSession.h"
#include "VeltoDate.h"
#include "WeekCalendar.h"
#include "WeekSlice.h"
#include "WeeklyTotal.h"

#include <QHash>
#include <QList>
#include <QString>

#include <map>
#include <optional>

// Tracked time turned into weeks and words. Nothing here reads the clock, the database or the
// system's settings: the present moment and the calendar are arguments, so any week convention and
// any time zone can be checked.
namespace TimeAggregation {

// The key under which weeklyTotals accumulates: a week and a project, or cards without one.
struct WeekKey {
    VeltoDate weekStart;
    std::optional<QString> projectID;

    bool operator==(const WeekKey &) const = default;
};

[[nodiscard]] size_t qHash(const WeekKey &key, size_t seed = 0);

// Each card's project; a card missing from the map counts as one without a project.
using ProjectByCard = QHash<QString, std::optional<QString>>;

// The starts of the `count` weeks that end with the one holding `now`, oldest first. `count` must
// not be negative.
[[nodiscard]] QList<VeltoDate> weekStarts(VeltoDate now, int count, const WeekCalendar &calendar);

// The interval from `start` to `end` cut at week boundaries, oldest first. At most 1000 weeks are
// cut; whatever lies beyond is dropped.
[[nodiscard]] QList<WeekSlice> weekSlices(VeltoDate start, VeltoDate end, const WeekCalendar &calendar);

// The finished sessions' time per week and project, from `weekCount - 1` weeks before the one
// holding `now` on, sorted by week, then by project id with cards without a project first.
[[nodiscard]] QList<WeeklyTotal> weeklyTotals(const QList<TimeSession> &sessions, const ProjectByCard &projectByCard,
                                              VeltoDate now, int weekCount, const WeekCalendar &calendar);

// The finished sessions' time per project, over all time; cards without a project under absent.
[[nodiscard]] std::map<std::optional<QString>, double> projectTotals(const QList<TimeSession> &sessions,
                                                                     const ProjectByCard &projectByCard);

// How many complete cards last moved into Complete in each of the `weekCount` weeks that end with
// the one holding `now`; weeks without a completion have no entry.
[[nodiscard]] std::map<VeltoDate, int> completionsByWeek(const QList<Card> &cards, VeltoDate now, int weekCount,
                                                         const WeekCalendar &calendar);

// A duration read as a quantity: "—", "42s", "25m", "2h", "2h 5m". The seconds must be finite.
[[nodiscard]] QString durationText(double seconds);

// A duration that is still running: "0:42", "25:00", "1:02:03", with the hours neither limited
// nor wrapped at a day; a negative one reads "0:00". The seconds must be finite.
[[nodiscard]] QString clockText(double seconds);

// Whether a finished session lasted at least its own target; a running one, or one without a
// target, has not met it.
[[nodiscard]] bool metTarget(const TimeSession &session);

} // namespace TimeAggregation
