#include "BookmarkError.h"

using namespace Qt::StringLiterals;

namespace {

QString describe(const BookmarkError::Reason &reason)
{
    if (const auto *create = std::get_if<BookmarkError::CouldNotCreate>(&reason))
        return u"Could not bookmark %1: %2"_s.arg(create->path, create->underlying);
    if (const auto *resolve = std::get_if<BookmarkError::CouldNotResolve>(&reason))
        return u"Could not resolve a bookmark: "_s + resolve->underlying;
    return std::get<BookmarkError::NotADirectory>(reason).path + u" is not a folder."_s;
}

} // namespace

BookmarkError::BookmarkError(Reason reason) : VeltoError(describe(reason)), m_reason(std::move(reason)) {}
