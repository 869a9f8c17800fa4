#pragma once

#include <QList>
#include <QString>

class SQLiteConnection;

// One step of the file format: applied once, in order, and never edited after it shipped.
struct Migration {
    qint64 version;
    QString name;
    QString sql;
};

// What one start-up's migration run did.
struct MigrationOutcome {
    qint64 fromVersion = 0;
    qint64 toVersion = 0;
    QList<QString> applied;

    bool operator==(const MigrationOutcome &) const = default;
};

// The list of migrations and the runner that brings any older file, or a new one, to the current
// version. A new database is made by the same eight steps as an old one, never from a snapshot.
namespace Schema {

inline constexpr qint64 currentVersion = 8;

const QList<Migration> &migrations();

void validateOrder(const QList<Migration> &list);

MigrationOutcome migrate(SQLiteConnection &connection);
MigrationOutcome migrate(SQLiteConnection &connection, const QList<Migration> &list);

} // namespace Schema
