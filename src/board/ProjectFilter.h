#pragma once

#include <QHashFunctions>
#include <QString>

#include <optional>
#include <variant>

// A restriction of the board by project. It also names a swimlane, so it is hashable.
struct ProjectFilter {
    struct Any {
        bool operator==(const Any &) const = default;
    };
    // Only cards without a project, including those whose project was deleted.
    struct Unassigned {
        bool operator==(const Unassigned &) const = default;
    };
    struct Project {
        QString id;
        bool operator==(const Project &) const = default;
    };

    std::variant<Any, Unassigned, Project> value = Any{};

    // Whether a card with this project, or with none, passes.
    [[nodiscard]] bool admits(const std::optional<QString> &projectID) const;

    bool operator==(const ProjectFilter &) const = default;
};

[[nodiscard]] size_t qHash(const ProjectFilter &filter, size_t seed = 0) noexcept;
