#pragma once

#include <QString>

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

} // namespace PlatformText
