#include "VeltoError.h"

VeltoError::VeltoError(const QString &text) : m_utf8(text.toUtf8()) {}

const char *VeltoError::what() const noexcept
{
    return m_utf8.constData();
}

QString VeltoError::text() const
{
    return QString::fromUtf8(m_utf8);
}
