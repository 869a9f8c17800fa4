#include "WorkingFileError.h"

using namespace Qt::StringLiterals;

namespace {

QString sentence(WorkingFileError::Reason reason, const QString &detail)
{
    switch (reason) {
    case WorkingFileError::Reason::tooLarge:
        return u"velto.md is over 1 MiB, so Velto did not read it."_s;
    case WorkingFileError::Reason::notText:
        return u"velto.md is not UTF-8 text, so Velto did not read it."_s;
    case WorkingFileError::Reason::unreadable:
        break;
    }
    return u"velto.md could not be read: %1."_s.arg(detail);
}

} // namespace

WorkingFileError::WorkingFileError(Reason reason, const QString &detail)
    : VeltoError(sentence(reason, detail)), m_reason(reason)
{
}
