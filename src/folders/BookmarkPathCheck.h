#pragma once

#include <QString>

#include <variant>

// What stands at a path, as far as using it goes: nothing to report, nothing there, or something
// that cannot be used, with the sentence to show.
struct BookmarkPathCheck {
    struct Reachable {
        bool operator==(const Reachable &) const = default;
    };
    struct Gone {
        bool operator==(const Gone &) const = default;
    };
    struct Problem {
        QString message;
        bool operator==(const Problem &) const = default;
    };

    std::variant<Reachable, Gone, Problem> outcome;

    bool operator==(const BookmarkPathCheck &) const = default;
};
