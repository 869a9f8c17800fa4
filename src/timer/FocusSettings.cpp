#include "FocusSettings.h"

#include <QVariant>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView targetSecondsKey = u"focusTargetSeconds";
constexpr QStringView showsCardNameKey = u"showsCardNameInFocusPanel";

int clampedTarget(qint64 seconds)
{
    return int(std::clamp<qint64>(seconds, FocusSettings::minimumTargetSeconds, FocusSettings::maximumTargetSeconds));
}

// The settings file keeps every value as text once it has been written to disk, so a whole
// decimal number in text counts as an integer; a fraction, a list or a word does not.
std::optional<qint64> storedInteger(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return value.toLongLong();
    case QMetaType::QString: {
        bool ok = false;
        const qint64 number = value.toString().toLongLong(&ok);
        return ok ? std::optional(number) : std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

// As with integers, a flag read back from disk is the text "true" or "false".
std::optional<bool> storedFlag(const QVariant &value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    const QString text = value.toString();
    if (text.compare(u"true"_s, Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(u"false"_s, Qt::CaseInsensitive) == 0)
        return false;
    return std::nullopt;
}

} // namespace

FocusSettings::FocusSettings(std::shared_ptr<QSettings> defaults, QObject *parent)
    : QObject(parent)
    , m_defaults(std::move(defaults))
    , m_targetSeconds(clampedTarget(storedInteger(m_defaults->value(targetSecondsKey)).value_or(defaultTargetSeconds)))
    , m_showsCardNameInFocusPanel(storedFlag(m_defaults->value(showsCardNameKey)).value_or(true))
{
}

void FocusSettings::setTargetSeconds(int seconds)
{
    const int clamped = clampedTarget(seconds);
    m_defaults->setValue(targetSecondsKey, clamped);
    if (clamped == m_targetSeconds)
        return;
    m_targetSeconds = clamped;
    emit targetSecondsChanged();
}

void FocusSettings::setShowsCardNameInFocusPanel(bool shows)
{
    m_defaults->setValue(showsCardNameKey, shows);
    if (shows == m_showsCardNameInFocusPanel)
        return;
    m_showsCardNameInFocusPanel = shows;
    emit showsCardNameInFocusPanelChanged();
}

QList<int> FocusSettings::selectableTargets() const
{
    QList<int> targets(targetChoices.begin(), targetChoices.end());
    if (!targets.contains(m_targetSeconds)) {
        targets.append(m_targetSeconds);
        std::sort(targets.begin(), targets.end());
    }
    return targets;
}
