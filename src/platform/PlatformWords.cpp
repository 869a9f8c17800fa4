#include "PlatformWords.h"

#include "PlatformText.h"

QString PlatformWords::openInFileManager()
{
    return PlatformText::openInFileManager();
}

QString PlatformWords::emptyColumnHint()
{
    return PlatformText::emptyColumnHint();
}

QString PlatformWords::addFolderHelp()
{
    return PlatformText::addFolderHelp();
}

QString PlatformWords::revealInFileManager()
{
    return PlatformText::revealInFileManager();
}

QString PlatformWords::saveShortcut()
{
    return PlatformText::saveShortcut();
}

QString PlatformWords::probeInstructions()
{
    return PlatformText::probeInstructions();
}
