#include "PlatformText.h"

using namespace Qt::StringLiterals;

QString PlatformText::identifierNotConfigured(const QString &environmentVariable)
{
    return u"No App Group identifier. Set VELTO_APP_GROUP_IDENTIFIER when configuring the build, "
           u"or set the %1 environment variable."_s.arg(environmentVariable);
}

QString PlatformText::containerFoundThroughDataDirectory()
{
    return u"Resolved through the user's data directory (XDG_DATA_HOME or HOME)."_s;
}

QString PlatformText::containerBuiltFromAccountHome()
{
    return u"The user's data directory is NOT known to this process (neither XDG_DATA_HOME nor HOME "
           u"is set); this path was constructed by hand from the account's home directory."_s;
}

QString PlatformText::tagContainsNewline(const QString &quotedTag)
{
    return u"a file manager tag may not contain a newline: "_s + quotedTag;
}

QString PlatformText::tagContainsComma(const QString &quotedTag)
{
    return u"a file manager tag may not contain a comma: "_s + quotedTag;
}

QString PlatformText::tagsUnreadable()
{
    return u"the folder's file manager tags could not be read, so they were left alone rather than overwritten"_s;
}

QString PlatformText::chooseUnreachableFolderAgain(const QString &name)
{
    return u"Choose “%1” again. Velto can no longer read the folder; once you may open it, picking it here "
           u"points the card at it again."_s.arg(name);
}

QString PlatformText::cannotReachFolder(const QString &name, const std::optional<QString> &failure)
{
    const QString reason = failure ? *failure + u' ' : QString();
    return u"Velto cannot reach “%1”. %2If the file manager did not open it, right-click the card and choose "
           u"Locate… to point at the folder again."_s.arg(name, reason);
}

QString PlatformText::noFileManagerAnswered()
{
    return u"No file manager answered, so the folder could not be shown."_s;
}

QString PlatformText::pendingFileDropMessage()
{
    return u"Velto tracks folders, not files. The enclosing folder can be added instead, with the dropped "
           u"file(s) on its checklist.\n\nChoose the folder to confirm which one Velto should track."_s;
}

QString PlatformText::notificationChannelDetail()
{
    return u"Named after the App Group, so every process that shares the container hears it on the session bus."_s;
}

QString PlatformText::probeInstructions()
{
    return u"Run velto-probe --watch in a terminal, then press Post. It should print a line each time."_s;
}

QString PlatformText::openInFileManager()
{
    return u"Open in File Manager"_s;
}

QString PlatformText::revealInFileManager()
{
    return u"Reveal in File Manager"_s;
}

QString PlatformText::saveShortcut()
{
    return u"Ctrl+Return"_s;
}

QString PlatformText::emptyColumnHint()
{
    return u"Drag a folder here, or press Ctrl+O."_s;
}

QString PlatformText::addFolderHelp()
{
    return u"Add a folder to the board (Ctrl+O)"_s;
}

QString PlatformText::fileManagerSection()
{
    return u"File Manager"_s;
}

QString PlatformText::tagMirrorLabel()
{
    return u"Show card status as a file manager tag"_s;
}

QString PlatformText::badgeLabel()
{
    return u"Badge tracked folders in the file manager"_s;
}

QString PlatformText::badgeExplanation()
{
    return u"Shows each folder's status on its icon in the file manager's windows, so a folder carries its "
           u"column even when you are not looking at the board."_s;
}

QString PlatformText::extensionOn()
{
    return u"File manager extension is on"_s;
}

QString PlatformText::extensionOff()
{
    return u"File manager extension is off — badges will not appear"_s;
}

QString PlatformText::extensionOnHelp()
{
    return u"If badges still do not appear, run `nautilus -q` in a terminal — Files caches which extensions it "
           u"has loaded."_s;
}

QString PlatformText::extensionOffHelp()
{
    return u"Badging runs in an extension of Files, which needs the python3-nautilus package and Velto's "
           u"extension in Files' extensions folder. Velto's package installs both; Turn On puts the extension "
           u"in your own extensions folder."_s;
}

QString PlatformText::actionsHelp()
{
    return u"Right-click folders in Files and look under Scripts, or in Dolphin under Actions. Velto's package "
           u"puts the entry there for everyone."_s;
}

QString PlatformText::actionsInstallHelp()
{
    return u"Running Velto from a build of your own, the button below installs the entry for your account, "
           u"pointing at this copy of Velto."_s;
}

QString PlatformText::installActions()
{
    return u"Install for This Account"_s;
}

QString PlatformText::actionsInstalled()
{
    return u"Installed for Files and Dolphin"_s;
}

QString PlatformText::translocatedTitle()
{
    return u"Velto is running from a temporary copy"_s;
}

QString PlatformText::translocatedText()
{
    return u"Velto's data folder is inside a temporary copy, so nothing it saves would last.\n\nInstall Velto "
           u"from its package, then open it from the application launcher."_s;
}

QString PlatformText::readOnlyVolumeTitle()
{
    return u"Velto's data folder is on a read-only volume"_s;
}

QString PlatformText::readOnlyVolumeText(const QString &dataFolder)
{
    return u"Velto keeps its board in “%1”, which is on a read-only volume. Nothing it saves there would "
           u"survive.\n\nMake that volume writable, or start Velto with XDG_DATA_HOME set to a writable folder, "
           u"then open it again."_s.arg(dataFolder);
}
