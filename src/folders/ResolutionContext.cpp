#include "ResolutionContext.h"

#include "FreedesktopTrash.h"

#include <QDir>
#include <QFileInfo>

#include <unistd.h>

namespace {

QString canonicalWhereItExists(const QString &path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

} // namespace

ResolutionContext ResolutionContext::current(std::shared_ptr<FailedSearches> failedSearches)
{
    return {MountTable::read(), QFileInfo(QDir::homePath()).canonicalFilePath(),
            canonicalWhereItExists(FreedesktopTrash::homeFilesDirectory()), getuid(), std::move(failedSearches)};
}
