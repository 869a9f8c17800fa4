#include "BoardVocabulary.h"

#include "CardDragging.h"
#include "CardStatus.h"
#include "Priority.h"
#include "VocabularyIndex.h"

namespace {

// An index out of range reads as the nearest case, so a view never draws nothing.
CardStatus statusAt(int index)
{
    return *VocabularyIndex::caseAt<CardStatus>(allCardStatuses, qBound(0, index, int(allCardStatuses.size()) - 1));
}

Priority priorityAt(int index)
{
    return *VocabularyIndex::caseAt<Priority>(allPriorities, qBound(0, index, int(allPriorities.size()) - 1));
}

QColor resolved(const ColorPair &pair, bool dark)
{
    return QColor(dark ? pair.dark : pair.light);
}

} // namespace

BoardVocabulary *BoardVocabulary::create(QQmlEngine *, QJSEngine *)
{
    // Owned by the engine; it holds no state.
    return new BoardVocabulary;
}

int BoardVocabulary::statusCount()
{
    return int(allCardStatuses.size());
}

int BoardVocabulary::priorityCount()
{
    return int(allPriorities.size());
}

QString BoardVocabulary::cardDragType()
{
    return CardDragging::cardType();
}

QString BoardVocabulary::statusLabel(int status) const
{
    return label(statusAt(status));
}

QString BoardVocabulary::statusSymbol(int status) const
{
    return symbol(statusAt(status));
}

QColor BoardVocabulary::accentColor(int status, bool dark) const
{
    return resolved(::accentColor(statusAt(status)), dark);
}

QColor BoardVocabulary::columnFill(int status, bool dark) const
{
    return resolved(::columnFill(statusAt(status)), dark);
}

QColor BoardVocabulary::pillFill(int status, bool dark) const
{
    return resolved(::pillFill(statusAt(status)), dark);
}

QColor BoardVocabulary::pillText(int status, bool dark) const
{
    return resolved(::pillText(statusAt(status)), dark);
}

QString BoardVocabulary::priorityLabel(int priority) const
{
    return label(priorityAt(priority));
}

QString BoardVocabulary::prioritySymbol(int priority) const
{
    return symbol(priorityAt(priority));
}
