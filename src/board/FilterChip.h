#pragma once

#include "BoardFilter.h"
#include "Project.h"
#include "Tag.h"

#include <QList>
#include <QString>

#include <optional>

// One restriction of the board in force, as the filter bar shows it under the controls.
struct FilterChip {
    QString id;
    QString label;
    std::optional<QString> colorHex;

    // Project, priorities, tags, hidden columns, then the priority sort; the search makes none.
    [[nodiscard]] static QList<FilterChip> activeChips(const BoardFilter &filter, bool sortByPriority,
                                                       const QList<Project> &projects, const QList<Tag> &tags);

    // The filter without the restriction of chip `id`; the priority sort is the caller's.
    [[nodiscard]] static BoardFilter clearing(const QString &id, BoardFilter filter);

    bool operator==(const FilterChip &) const = default;
};
