#include "FocusPresentation.h"

namespace {

// One answer per event, from the state `from`.
struct Transition {
    const FocusPresentation &from;

    // A rating the user ignored is dropped when the next session begins.
    FocusPresentation operator()(const FocusPresentation::SessionStarted &event) const
    {
        return {FocusPresentation::Running{event.session}};
    }

    // A session found running at launch goes on timing without opening the panel, and never
    // replaces what the panel already shows.
    FocusPresentation operator()(const FocusPresentation::SessionAdopted &) const { return from; }

    FocusPresentation operator()(const FocusPresentation::RatingRaised &event) const
    {
        return {FocusPresentation::Rating{event.session}};
    }

    // An answer about any session but the one in the prompt leaves the prompt in place.
    FocusPresentation operator()(const FocusPresentation::RatingResolved &event) const
    {
        const auto *rating = std::get_if<FocusPresentation::Rating>(&from.state);
        if (rating && rating->session.id == event.sessionID)
            return {FocusPresentation::Hidden{}};
        return from;
    }

    FocusPresentation operator()(const FocusPresentation::SessionEndedSilently &) const
    {
        return {FocusPresentation::Hidden{}};
    }
};

} // namespace

FocusPresentation FocusPresentation::applied(const Event &event) const
{
    return std::visit(Transition{*this}, event);
}
