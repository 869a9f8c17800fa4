#include "Mood.h"

#include "RawValueLookup.h"

using namespace Qt::StringLiterals;

std::optional<Mood> moodFromRawValue(const QString &raw)
{
    return caseWithRawValue<Mood>(allMoods, raw);
}

QString rawValue(Mood mood)
{
    switch (mood) {
    case Mood::deep: return u"deep"_s;
    case Mood::focused: return u"focused"_s;
    case Mood::ok: return u"ok"_s;
    case Mood::scattered: return u"scattered"_s;
    case Mood::interrupted: return u"interrupted"_s;
    }
    Q_UNREACHABLE();
}
