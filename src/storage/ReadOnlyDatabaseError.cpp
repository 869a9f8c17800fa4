#include "ReadOnlyDatabaseError.h"

using namespace Qt::StringLiterals;

namespace {

QString describe(const ReadOnlyDatabaseError::Reason &reason)
{
    if (auto file = std::get_if<ReadOnlyDatabaseError::FileReadOnly>(&reason))
        return u"The database at %1 is read-only, so Velto cannot save anything. "
               u"Make the file writable and try again."_s.arg(file->path);
    const auto &folder = std::get<ReadOnlyDatabaseError::FolderReadOnly>(reason);
    return u"The folder %1, which holds the database, is read-only, so Velto cannot save anything. "
           u"Make the folder writable and try again."_s.arg(folder.folder);
}

} // namespace

ReadOnlyDatabaseError::ReadOnlyDatabaseError(Reason reason) : VeltoError(describe(reason)), m_reason(reason) {}
