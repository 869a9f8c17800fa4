#include "RepositoryError.h"

using namespace Qt::StringLiterals;

namespace {

QString describe(const RepositoryError::Reason &reason)
{
    if (auto malformed = std::get_if<RepositoryError::MalformedRow>(&reason))
        return u"Row %1 in %2 could not be read: %3"_s.arg(malformed->id, malformed->table, malformed->detail);
    const auto &missing = std::get<RepositoryError::NotFound>(reason);
    return u"No row %1 in %2."_s.arg(missing.id, missing.table);
}

} // namespace

RepositoryError::RepositoryError(Reason reason) : VeltoError(describe(reason)), m_reason(std::move(reason)) {}
