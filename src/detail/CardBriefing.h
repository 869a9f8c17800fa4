#pragma once

#include "Card.h"
#include "ChecklistItem.h"
#include "FolderEntry.h"
#include "Project.h"
#include "Tag.h"
#include "VeltoDate.h"

#include <QList>
#include <QString>
#include <QTimeZone>

#include <optional>

// A card written as markdown for an agent: what the folder is, what finishing means, which files
// matter, and how to keep a working file. Agents and users read it as it stands, so every word and
// blank line is part of the format. Nothing here reads the disk or the clock.
namespace CardBriefing {

struct Input {
    Card card;
    // The folder's current path; absent when it has no current location.
    std::optional<QString> folderPath;
    std::optional<Project> project;
    // In the board's order.
    QList<Tag> tags;
    // The checklist, in its order.
    QList<ChecklistItem> keyFiles;
    // The folder's top level, folders first.
    QList<FolderEntry> contents;
    bool contentsUnavailable = false;

    bool operator==(const Input &) const = default;
};

// The whole document, lines joined by a line feed with none after the last. The deadline's date
// and its distance in days are those of `zone`; callers pass the system's zone.
[[nodiscard]] QString render(const Input &input, VeltoDate now, const QTimeZone &zone);

} // namespace CardBriefing
