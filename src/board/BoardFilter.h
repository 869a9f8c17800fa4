#pragma once

#include "Card.h"
#include "CardStatus.h"
#include "Priority.h"
#include "ProjectFilter.h"

#include <QSet>
#include <QString>

#include <set>

// Which cards the board shows. The columns, the swimlanes and the due-soon list all ask `matches`,
// so the rules live nowhere else.
struct BoardFilter {
    ProjectFilter project;
    // Tags a card must all carry.
    QSet<QString> tagIDs;
    // Priorities a card may have; empty means any.
    std::set<Priority> priorities;
    // Statuses shown; empty shows nothing.
    std::set<CardStatus> visibleStatuses{allCardStatuses.begin(), allCardStatuses.end()};
    // As typed; compared untrimmed, searched trimmed.
    QString searchText;

    [[nodiscard]] bool matches(const Card &card, const QSet<QString> &cardTagIDs) const;

    bool operator==(const BoardFilter &) const = default;
};
