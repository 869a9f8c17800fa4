#pragma once

#include "Project.h"

#include <QString>

#include <optional>

// One horizontal band of the grouped board: the cards of one project, or of none.
struct Swimlane {
    std::optional<Project> project;

    // The project's id, or a fixed word for the lane without a project.
    [[nodiscard]] QString identity() const
    {
        return project ? project->id : QStringLiteral("__unassigned__");
    }

    bool operator==(const Swimlane &) const = default;
};
