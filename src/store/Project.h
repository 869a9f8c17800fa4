#pragma once

#include <QString>

class SQLiteStatement;

// A named group of cards; each project is a swimlane when the board is grouped.
struct Project {
    QString id;
    QString name;
    QString color;

    bool operator==(const Project &) const = default;
};

// The project on a row of "id, name, color"; a NULL colour reads as the neutral grey.
[[nodiscard]] Project projectFromRow(const SQLiteStatement &row);
