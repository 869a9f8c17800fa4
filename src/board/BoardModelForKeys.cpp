// The part of BoardModel that drives the board from the keyboard: which card has the focus, and
// where a step of the arrow keys leads.

#include "BoardModel.h"

#include "AssignIfChanged.h"
#include "CardStep.h"

void BoardModel::setFocusedCardID(const QString &id)
{
    if (assignIfChanged(m_focusedCardID, id))
        emit focusedCardIDChanged();
}

QString BoardModel::neighbourCardID(const QString &cardID, int step) const
{
    const auto card = cardWithID(cardID);
    if (!card || step < 0 || step > int(CardStep::Step::last))
        return {};
    // The columns as the board shows them: only those not hidden, only the card's lane.
    const ProjectFilter cardLane = lane(*card);
    QList<QStringList> columns;
    for (const CardStatus status : allCardStatuses) {
        if (!m_filter.visibleStatuses.contains(status))
            continue;
        QStringList ids;
        for (const Card &shown : columnCards(status, cardLane))
            ids.append(shown.id);
        columns.append(ids);
    }
    return CardStep::after(columns, cardID, CardStep::Step(step)).value_or(QString());
}

void BoardModel::requestCardFocus(const QString &cardID)
{
    setFocusedCardID(cardID);
    emit cardFocusRequested(cardID);
}
