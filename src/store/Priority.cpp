#include "Priority.h"

#include "RawValueLookup.h"

using namespace Qt::StringLiterals;

std::optional<Priority> priorityFromRawValue(QAnyStringView raw)
{
    return caseWithRawValue<Priority>(allPriorities, raw);
}

QString rawValue(Priority priority)
{
    switch (priority) {
    case Priority::now: return u"now"_s;
    case Priority::next: return u"next"_s;
    case Priority::today: return u"today"_s;
    case Priority::thisWeek: return u"this_week"_s;
    case Priority::later: return u"later"_s;
    }
    Q_UNREACHABLE();
}

QString label(Priority priority)
{
    switch (priority) {
    case Priority::now: return u"Now"_s;
    case Priority::next: return u"Next"_s;
    case Priority::today: return u"Today"_s;
    case Priority::thisWeek: return u"This Week"_s;
    case Priority::later: return u"Later"_s;
    }
    Q_UNREACHABLE();
}

QString symbol(Priority priority)
{
    switch (priority) {
    case Priority::now: return u"flag.fill"_s;
    case Priority::next: return u"flag"_s;
    case Priority::today: return u"sun.max"_s;
    case Priority::thisWeek: return u"calendar"_s;
    case Priority::later: return u"flag.slash"_s;
    }
    Q_UNREACHABLE();
}

int rank(Priority priority)
{
    return static_cast<int>(priority);
}
