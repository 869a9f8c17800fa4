#include "CardFaces.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

CardFaceInputs someInputs()
{
    CardFaceInputs inputs;
    inputs.card.id = u"CARD-1"_s;
    inputs.card.displayName = u"Thesis"_s;
    inputs.card.displayPath = u"/home/ada/Thesis"_s;
    inputs.project = Project{.id = u"P1"_s, .name = u"Writing"_s, .color = u"#FF9500"_s};
    inputs.tags = {Tag{.id = u"T1"_s, .name = u"urgent"_s, .color = u"#FF3B30"_s}};
    inputs.progress = {1, 3};
    inputs.workingDone = 2;
    inputs.workingTotal = 5;
    inputs.availability = CardResolution::Availability::available;
    return inputs;
}

// A face is kept while nothing it shows changed, and built again, showing the change, as soon as
// anything did: a face kept too long would leave a renamed project or a moved card on screen.
TEST(CardFacesTest, AFaceIsReusedUntilSomethingItShowsChanges)
{
    const struct {
        const char *name;
        std::function<void(CardFaceInputs &)> change;
        const char *key;
        QVariant shown;
    } cases[] = {
        {"the title", [](CardFaceInputs &in) { in.card.title = u"Final draft"_s; }, "title", u"Final draft"_s},
        {"the column", [](CardFaceInputs &in) { in.card.status = CardStatus::complete; }, "isComplete", true},
        {"the project's name", [](CardFaceInputs &in) { in.project->name = u"Research"_s; }, "projectName",
         u"Research"_s},
        {"a tag's colour",
         [](CardFaceInputs &in) { in.tags[0].color = u"#34C759"_s; }, "tags",
         QVariantList{colouredRecord(u"T1"_s, u"urgent"_s, u"#34C759"_s)}},
        {"the checklist", [](CardFaceInputs &in) { in.progress.done = 3; }, "progressDone", qint64(3)},
        {"the working file", [](CardFaceInputs &in) { in.workingTotal = 6; }, "workingTotal", 6},
        {"the folder's verdict",
         [](CardFaceInputs &in) { in.availability = CardResolution::Availability::unreachable; }, "availability",
         u"unreachable"_s},
        {"the folder's failure", [](CardFaceInputs &in) { in.failure = u"Permission denied"_s; }, "failure",
         u"Permission denied"_s},
        {"the need to locate", [](CardFaceInputs &in) { in.needsLocate = true; }, "needsLocate", true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        CardFaces faces;
        CardFaceInputs inputs = someInputs();
        const QVariantMap first = faces.faceFor(inputs);
        EXPECT_TRUE(faces.faceFor(someInputs()).isSharedWith(first)) << "unchanged, so not built again";
        c.change(inputs);
        const QVariantMap changed = faces.faceFor(inputs);
        EXPECT_FALSE(changed.isSharedWith(first));
        EXPECT_EQ(changed.value(QString::fromLatin1(c.key)), c.shown);
        EXPECT_EQ(changed, CardFaces::build(inputs));
    }
}

TEST(CardFacesTest, CardsThatLeftTheBoardAreForgotten)
{
    CardFaces faces;
    const CardFaceInputs inputs = someInputs();
    const QVariantMap first = faces.faceFor(inputs);
    faces.keepOnly({inputs.card});
    EXPECT_TRUE(faces.faceFor(inputs).isSharedWith(first));
    CardFaceInputs other = someInputs();
    other.card.id = u"CARD-2"_s;
    (void)faces.faceFor(other);
    // A board of as many cards, one of them another.
    Card third = other.card;
    third.id = u"CARD-3"_s;
    faces.keepOnly({other.card, third});
    EXPECT_FALSE(faces.faceFor(inputs).isSharedWith(first));
}

} // namespace
