#include "DeadlineUrgency.h"

using namespace Qt::StringLiterals;

QString symbol(DeadlineUrgency urgency)
{
    switch (urgency) {
    case DeadlineUrgency::none: return {};
    case DeadlineUrgency::soon: return u"calendar"_s;
    case DeadlineUrgency::near: return u"clock.badge.exclamationmark"_s;
    case DeadlineUrgency::overdue: return u"exclamationmark.triangle.fill"_s;
    }
    Q_UNREACHABLE();
}
