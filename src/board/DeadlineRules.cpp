#include "DeadlineRules.h"

#include "Card.h"

#include <QDate>

using namespace Qt::StringLiterals;

namespace DeadlineRules {

namespace {

QDate dayIn(VeltoDate instant, const QTimeZone &zone)
{
    return instant.toDateTime().toTimeZone(zone).date();
}

DeadlineUrgency urgencyForDays(int days)
{
    if (days < 0)
        return DeadlineUrgency::overdue;
    if (days <= 2)
        return DeadlineUrgency::near;
    if (days <= 7)
        return DeadlineUrgency::soon;
    return DeadlineUrgency::none;
}

} // namespace

int daysUntil(VeltoDate deadline, VeltoDate now, const QTimeZone &zone)
{
    if (!zone.isValid())
        return 0;
    const QDate today = dayIn(now, zone);
    const QDate deadlineDay = dayIn(deadline, zone);
    if (!today.isValid() || !deadlineDay.isValid())
        return 0;
    // Counting dates rather than seconds is what makes a 23- or 25-hour day one day.
    return int(today.daysTo(deadlineDay));
}

DeadlineUrgency deadlineUrgency(std::optional<VeltoDate> deadline, bool isComplete, VeltoDate now,
                                const QTimeZone &zone)
{
    if (!deadline || isComplete)
        return DeadlineUrgency::none;
    return urgencyForDays(daysUntil(*deadline, now, zone));
}

DeadlineUrgency deadlineUrgency(const Card &card, VeltoDate now, const QTimeZone &zone)
{
    return deadlineUrgency(card.deadline, card.status == CardStatus::complete, now, zone);
}

QString deadlineText(VeltoDate deadline, VeltoDate now, const QTimeZone &zone)
{
    const int days = daysUntil(deadline, now, zone);
    if (days >= 2)
        return u"Due in %1 days"_s.arg(days);
    if (days == 1)
        return u"Due tomorrow"_s;
    if (days == 0)
        return u"Due today"_s;
    if (days == -1)
        return u"Overdue by 1 day"_s;
    return u"Overdue by %1 days"_s.arg(-days);
}

} // namespace DeadlineRules
