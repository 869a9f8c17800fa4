#include "SQLiteError.h"

using namespace Qt::StringLiterals;

SQLiteError::SQLiteError(int code, const QString &message, const QString &context)
    : VeltoError(u"SQLite error %1 (%2) while %3"_s.arg(code).arg(message, context)),
      m_code(code), m_message(message), m_context(context)
{
}
