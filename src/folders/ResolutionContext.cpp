#include "ResolutionContext.h"

#include "FreedesktopTrash.h"

#include <QDir>
#include <QFileInfo>

#include <unistd.h>

ResolutionContext ResolutionContext::current()
{
    return {MountTable::read(), QFileInfo(QDir::homePath()).canonicalFilePath(), FreedesktopTrash::homeFilesDirectory(),
            getuid()};
}
