#include "WeekLabel.h"

using namespace Qt::StringLiterals;

namespace WeekLabel {

QString format(const QLocale &locale)
{
    // Qt has no skeletons to localise "d MMM" from, so the order is taken from the locale's short
    // date, which every locale has: the month first there means the month first here.
    const QString shortDate = locale.dateFormat(QLocale::ShortFormat);
    const qsizetype day = shortDate.indexOf(u'd');
    const qsizetype month = shortDate.indexOf(u'M');
    return month >= 0 && day >= 0 && month < day ? u"MMM d"_s : u"d MMM"_s;
}

QString of(VeltoDate weekStart, const WeekCalendar &calendar, const QLocale &locale)
{
    const QDate day = weekStart.toDateTime().toTimeZone(calendar.zone).date();
    return locale.toString(day, format(locale));
}

} // namespace WeekLabel
