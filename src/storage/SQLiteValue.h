#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <optional>
#include <variant>

// One value bound to a statement parameter. An empty blob stays a zero-length blob, never NULL,
// so it passes a NOT NULL column.
struct SQLiteValue {
    std::variant<std::nullptr_t, qint64, double, QString, QByteArray> value;

    SQLiteValue() : value(nullptr) {}
    SQLiteValue(std::nullptr_t) : value(nullptr) {}
    SQLiteValue(int v) : value(qint64(v)) {}
    SQLiteValue(qint64 v) : value(v) {}
    SQLiteValue(double v) : value(v) {}
    SQLiteValue(const QString &v) : value(v) {}
    SQLiteValue(const QByteArray &v) : value(v) {}

    template <typename T>
    SQLiteValue(const std::optional<T> &v) : SQLiteValue()
    {
        if (v)
            *this = SQLiteValue(*v);
    }

    [[nodiscard]] bool isNull() const { return std::holds_alternative<std::nullptr_t>(value); }

    bool operator==(const SQLiteValue &) const = default;
};
