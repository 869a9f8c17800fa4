#pragma once

#include "VeltoDate.h"

#include <QString>
#include <QUtf8StringView>

#include <optional>

class SQLiteStatement;

// How the stored forms of flags, dates and vocabulary words read back into records.
namespace RowReading {

// True only for exactly 1: any other integer is false.
[[nodiscard]] bool flag(const SQLiteStatement &row, int column);
// Whole seconds since 1970.
[[nodiscard]] VeltoDate date(const SQLiteStatement &row, int column);
// Absent when the column is NULL; 0 is the instant 1970-01-01, not absence.
[[nodiscard]] std::optional<VeltoDate> optionalDate(const SQLiteStatement &row, int column);
// A colour text; a NULL reads as the neutral grey "#8E8E93".
[[nodiscard]] QString color(const SQLiteStatement &row, int column);
// A stored word as a failure quotes it: the text, or NULL for a NULL column.
[[nodiscard]] QString textOrNull(const std::optional<QUtf8StringView> &word);

} // namespace RowReading
