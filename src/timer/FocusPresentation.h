#pragma once

#include "TimeSession.h"

#include <QString>

#include <variant>

// What the focus panel is doing: showing a running session, asking how a finished one went, or
// staying out of the way. The timer feeds it events; the clock never does, so a session that runs
// past its target stays `Running`.
struct FocusPresentation {
    struct Running {
        TimeSession session;
        bool operator==(const Running &) const = default;
    };
    struct Rating {
        TimeSession session;
        bool operator==(const Rating &) const = default;
    };
    struct Hidden {
        bool operator==(const Hidden &) const = default;
    };

    struct SessionStarted {
        TimeSession session;
        bool operator==(const SessionStarted &) const = default;
    };
    struct SessionAdopted {
        TimeSession session;
        bool operator==(const SessionAdopted &) const = default;
    };
    struct RatingRaised {
        TimeSession session;
        bool operator==(const RatingRaised &) const = default;
    };
    // Carries no mood: declining to rate ends the prompt the same way.
    struct RatingResolved {
        QString sessionID;
        bool operator==(const RatingResolved &) const = default;
    };
    struct SessionEndedSilently {
        bool operator==(const SessionEndedSilently &) const = default;
    };
    using Event = std::variant<SessionStarted, SessionAdopted, RatingRaised, RatingResolved, SessionEndedSilently>;

    std::variant<Running, Rating, Hidden> state = Hidden{};

    // The state after `event`; total, and without effects.
    [[nodiscard]] FocusPresentation applied(const Event &event) const;

    bool operator==(const FocusPresentation &) const = default;
};
