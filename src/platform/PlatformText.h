#pragma once

#include <QString>

#include <optional>

// The user-facing sentences that would name a macOS place or rule, in the words that are true on
// Linux. Every other text of the system is spelled where it is used.
namespace PlatformText {

// The failure when no usable shared-container identifier is configured.
QString identifierNotConfigured(const QString &environmentVariable);

// How the shared container's path was found, by route.
QString containerFoundThroughDataDirectory();
QString containerBuiltFromAccountHome();

// Why a folder's status tag could not be put on or taken off; `quotedTag` is already quoted.
QString tagContainsNewline(const QString &quotedTag);
QString tagContainsComma(const QString &quotedTag);
QString tagsUnreadable();

// Asks for a folder the card can no longer read, saying what will help.
QString chooseUnreachableFolderAgain(const QString &name);

// The banner after revealing a folder that is not available; `failure` says why, when known.
QString cannotReachFolder(const QString &name, const std::optional<QString> &failure);

// The banner when neither the file manager nor the desktop would show a card's folder.
QString noFileManagerAnswered();

// Why files dropped on the board wait until their folder is chosen.
QString pendingFileDropMessage();

// What the diagnostics say of the change channel's name.
QString notificationChannelDetail();

// How the diagnostics window tells the user to watch the change channel from a terminal.
QString probeInstructions();

// The action that shows a card's folder in the file manager.
QString openInFileManager();

// The action that shows one file in the file manager.
QString revealInFileManager();

// The key that saves a sheet's text, as a key sequence.
QString saveShortcut();

// What the empty first column suggests.
QString emptyColumnHint();

// The help of the filter bar's add-folder button.
QString addFolderHelp();

// The settings section about the file manager.
QString fileManagerSection();

// The tag mirror's switch.
QString tagMirrorLabel();

// The badges' switch and what it does.
QString badgeLabel();
QString badgeExplanation();

// Whether the badge extension is installed, and what helps either way.
QString extensionOn();
QString extensionOff();
QString extensionOnHelp();
QString extensionOffHelp();

// Where the add-to-board entry shows in the file managers, and how it gets there.
QString actionsHelp();
QString actionsInstallHelp();
QString installActions();
QString actionsInstalled();

// The gate shown when saved data would not last.
QString translocatedTitle();
QString translocatedText();
QString readOnlyVolumeTitle();
QString readOnlyVolumeText(const QString &dataFolder);

} // namespace PlatformText
