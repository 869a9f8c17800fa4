#include "Mood.h"

#include "RawValueLookup.h"

using namespace Qt::StringLiterals;

std::optional<Mood> moodFromRawValue(QAnyStringView raw)
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

QString label(Mood mood)
{
    switch (mood) {
    case Mood::deep: return u"Deep"_s;
    case Mood::focused: return u"Focused"_s;
    case Mood::ok: return u"OK"_s;
    case Mood::scattered: return u"Scattered"_s;
    case Mood::interrupted: return u"Interrupted"_s;
    }
    Q_UNREACHABLE();
}

QString symbol(Mood mood)
{
    switch (mood) {
    case Mood::deep: return u"sparkles"_s;
    case Mood::focused: return u"largecircle.fill.circle"_s;
    case Mood::ok: return u"circle.lefthalf.filled"_s;
    case Mood::scattered: return u"circle.dotted"_s;
    case Mood::interrupted: return u"exclamationmark.triangle"_s;
    }
    Q_UNREACHABLE();
}
