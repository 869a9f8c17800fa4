#include "FolderListingError.h"

#include "FolderPaths.h"

using namespace Qt::StringLiterals;

FolderListingError::FolderListingError(const QString &path, int errorCode)
    : VeltoError(u"The folder “%1” could not be opened: %2."_s.arg(FolderPaths::lastComponent(path),
                                                                   qt_error_string(errorCode)))
    , m_path(path)
    , m_errorCode(errorCode)
{
}
