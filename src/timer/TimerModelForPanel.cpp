#include "TimerModel.h"

#include "TimeAggregation.h"

#include <QVariantMap>

using namespace Qt::StringLiterals;

// What the focus panel reads of the presentation and its session.

const TimeSession *TimerModel::presentedSession() const
{
    if (const auto *running = std::get_if<FocusPresentation::Running>(&m_presentation.state))
        return &running->session;
    if (const auto *rating = std::get_if<FocusPresentation::Rating>(&m_presentation.state))
        return &rating->session;
    return nullptr;
}

TimerModel::PresentationKind TimerModel::presentationKind() const
{
    if (std::holds_alternative<FocusPresentation::Running>(m_presentation.state))
        return PresentationKind::Running;
    if (std::holds_alternative<FocusPresentation::Rating>(m_presentation.state))
        return PresentationKind::Rating;
    return PresentationKind::Hidden;
}

QString TimerModel::presentedSessionID() const
{
    const TimeSession *session = presentedSession();
    return session ? session->id : QString();
}

double TimerModel::presentedTargetSeconds() const
{
    const TimeSession *session = presentedSession();
    return session && session->targetSeconds ? double(*session->targetSeconds) : 0.0;
}

double TimerModel::presentedLengthSeconds() const
{
    const TimeSession *session = presentedSession();
    if (!session || !session->endedAt)
        return 0.0;
    return session->endedAt->secondsSinceReferenceDate() - session->startedAt.secondsSinceReferenceDate();
}

bool TimerModel::presentedMetTarget() const
{
    const TimeSession *session = presentedSession();
    return session && TimeAggregation::metTarget(*session);
}

QVariantList TimerModel::moods()
{
    QVariantList list;
    for (const Mood mood : allMoods)
        list.append(QVariantMap{{u"raw"_s, rawValue(mood)}, {u"label"_s, label(mood)}, {u"symbol"_s, symbol(mood)}});
    return list;
}
