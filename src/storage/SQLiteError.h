#pragma once

#include "VeltoError.h"

// The one failure of the SQLite layer: what SQLite (or the layer) said, and what was being done.
class SQLiteError : public VeltoError {
public:
    SQLiteError(int code, const QString &message, const QString &context);

    [[nodiscard]] int code() const { return m_code; }
    [[nodiscard]] const QString &message() const { return m_message; }
    [[nodiscard]] const QString &context() const { return m_context; }

private:
    int m_code;
    QString m_message;
    QString m_context;
};
