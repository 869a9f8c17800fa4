#pragma once

#include <QString>

class SQLiteStatement;

// A label any number of cards can carry.
struct Tag {
    QString id;
    QString name;
    QString color;

    bool operator==(const Tag &) const = default;
};

// The tag on a row of "id, name, color"; a NULL colour reads as the neutral grey.
[[nodiscard]] Tag tagFromRow(const SQLiteStatement &row);
