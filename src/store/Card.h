#pragma once

#include "CardStatus.h"
#include "Priority.h"
#include "VeltoDate.h"

#include <QByteArray>
#include <QString>

#include <optional>

class SQLiteStatement;

// One tracked folder on the board. Dates are whole seconds (see VeltoDate).
struct Card {
    QString id;
    QByteArray bookmark;
    QString displayPath;
    QString displayName;
    CardStatus status = CardStatus::notStarted;
    Priority priority = Priority::later;
    std::optional<QString> projectID;
    std::optional<VeltoDate> deadline;
    double sortOrder = 0.0;
    bool isMissing = false;
    VeltoDate createdAt;
    VeltoDate statusChangedAt;
    std::optional<qint64> lastSeenFileCount;
    std::optional<QString> finderTag;
    std::optional<QString> title;
    std::optional<QString> goal;

    // The name shown everywhere: the title as stored unless it is blank, else the folder's name.
    [[nodiscard]] QString boardTitle() const;
    // A title typed identical to the folder's name is no custom title.
    [[nodiscard]] bool hasCustomTitle() const;

    bool operator==(const Card &) const = default;
};

// Every field can be moved by copying its bytes, so a list of ten thousand cards grows without
// moving each one.
Q_DECLARE_TYPEINFO(Card, Q_RELOCATABLE_TYPE);

// The columns every SELECT and the INSERT on `cards` name, in the order `cardFromRow` reads them.
[[nodiscard]] QString cardColumns();

// The card on the statement's current row; throws RepositoryError for a NULL bookmark or an
// unknown status or priority.
[[nodiscard]] Card cardFromRow(const SQLiteStatement &row);
