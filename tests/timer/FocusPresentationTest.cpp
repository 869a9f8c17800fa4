#include "FocusPresentation.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using FP = FocusPresentation;

TEST(FocusPresentation, FollowsTheTransitionTable)
{
    TimeSession a;
    a.id = u"A"_s;
    TimeSession n;
    n.id = u"N"_s;
    // The same id in another record: a rating is resolved by id alone.
    TimeSession aRated = a;
    aRated.mood = Mood::deep;

    const FP running{FP::Running{a}}, rating{FP::Rating{a}}, hidden{FP::Hidden{}};
    const struct {
        const char *name;
        FP from;
        FP::Event event;
        FP to;
    } cases[] = {
        {"start drops a pending rating", rating, FP::SessionStarted{n}, {FP::Running{n}}},
        {"adopting keeps another running session", running, FP::SessionAdopted{n}, running},
        {"adopting keeps the prompt", rating, FP::SessionAdopted{n}, rating},
        {"adopting at launch leaves the panel closed", hidden, FP::SessionAdopted{n}, hidden},
        {"a newer rating replaces the pending one", rating, FP::RatingRaised{n}, {FP::Rating{n}}},
        {"resolving the running session's id changes nothing", running, FP::RatingResolved{a.id}, running},
        {"resolving compares ids only", FP{FP::Rating{aRated}}, FP::RatingResolved{a.id}, hidden},
        {"resolving another session keeps the prompt", rating, FP::RatingResolved{n.id}, rating},
        {"ids compare exactly", rating, FP::RatingResolved{u"a"_s}, rating},
        {"silent end drops a pending rating", rating, FP::SessionEndedSilently{}, hidden},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.from.applied(c.event), c.to);
    }
}

} // namespace
