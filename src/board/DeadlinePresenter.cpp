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

} // namespace

DeadlinePresenter *DeadlinePresenter::create(QQmlEngine *, QJSEngine *)
{
    // Without a parent the engine owns the instance; it holds no state, so nothing is shared.
    return new DeadlinePresenter;
}

QString DeadlinePresenter::text(const QDateTime &deadline) const
{
    const std::optional<VeltoDate> date = veltoDate(deadline);
    if (!date)
        return {};
    return DeadlineRules::deadlineText(*date, VeltoDate::now(), QTimeZone::systemTimeZone());
}

int DeadlinePresenter::urgency(const QDateTime &deadline, bool isComplete) const
{
    return int(DeadlineRules::deadlineUrgency(veltoDate(deadline), isComplete, VeltoDate::now(),
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
