#include "DeadlinePresenter.h"

#include "DeadlineRules.h"
#include "VeltoDate.h"

#include <QLocale>
#include <QTimeZone>

#include <optional>

namespace {

std::optional<VeltoDate> veltoDate(const QDateTime &deadline)
{
    if (!deadline.isValid())
        return std::nullopt;
    return VeltoDate::fromStoredSeconds(deadline.toSecsSinceEpoch());
}

// A moment of `today`: the rules count calendar days, so any moment of the day gives its answer.
VeltoDate momentOf(QDate today)
{
    return VeltoDate::fromStoredSeconds(today.startOfDay(QTimeZone::systemTimeZone()).toSecsSinceEpoch());
}

} // namespace

DeadlinePresenter::DeadlinePresenter(QObject *parent) : QObject(parent)
{
    connect(&m_day, &LocalDay::todayChanged, this, &DeadlinePresenter::todayChanged);
}

DeadlinePresenter *DeadlinePresenter::create(QQmlEngine *, QJSEngine *)
{
    // Without a parent the engine owns the instance; each engine follows the day on its own.
    return new DeadlinePresenter;
}

QString DeadlinePresenter::text(const QDateTime &deadline, QDate today) const
{
    const std::optional<VeltoDate> date = veltoDate(deadline);
    if (!date)
        return {};
    return DeadlineRules::deadlineText(*date, momentOf(today), QTimeZone::systemTimeZone());
}

int DeadlinePresenter::urgency(const QDateTime &deadline, bool isComplete, QDate today) const
{
    return int(DeadlineRules::deadlineUrgency(veltoDate(deadline), isComplete, momentOf(today),
                                              QTimeZone::systemTimeZone()));
}

QString DeadlinePresenter::symbolName(int urgency) const
{
    if (urgency < int(DeadlineUrgency::none) || urgency > int(DeadlineUrgency::overdue))
        return {};
    return symbol(DeadlineUrgency(urgency));
}

QString DeadlinePresenter::helpText(const QDateTime &deadline) const
{
    if (!deadline.isValid())
        return {};
    return QLocale().toString(deadline.toTimeZone(QTimeZone::systemTimeZone()).date(), QLocale::LongFormat);
}
