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

ResolutionContext withMounts(MountTable mounts, quint64 generation, std::shared_ptr<FailedSearches> failedSearches)
{
    return {std::move(mounts), QFileInfo(QDir::homePath()).canonicalFilePath(),
            canonicalWhereItExists(FreedesktopTrash::homeFilesDirectory()), getuid(), std::move(failedSearches),
            generation};
}

} // namespace

ResolutionContext ResolutionContext::current(std::shared_ptr<FailedSearches> failedSearches)
{
    return withMounts(MountTable::read(), 0, std::move(failedSearches));
}

ResolutionContext ResolutionContext::current(MountWatch &mounts, std::shared_ptr<FailedSearches> failedSearches)
{
    MountWatch::Reading reading = mounts.current();
    return withMounts(std::move(reading.table), reading.generation, std::move(failedSearches));
}
