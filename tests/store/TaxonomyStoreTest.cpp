#include "StoreFixture.h"

#include "ProjectPalette.h"

using namespace Qt::StringLiterals;

namespace {

class TaxonomyStoreTest : public StoreFixture {
protected:
    void SetUp() override
    {
        StoreFixture::SetUp();
        if (!IsSkipped())
            await(database().insertCard(makeCard(u"A"_s, CardStatus::notStarted, 0)));
    }
};

TEST_F(TaxonomyStoreTest, ChecklistKeepsItsOrderAndCountsWhatIsDone)
{
    EXPECT_EQ(await(database().nextChecklistOrder(u"A"_s)), 0.0);
    for (const auto &[id, order, isDone] : {std::tuple(u"one"_s, 0.0, true), std::tuple(u"three"_s, 2.0, true),
                                            std::tuple(u"two"_s, 1.0, false)})
        await(database().insertChecklistItem({id, u"A"_s, "b", id + u".md"_s, isDone, false, order}));
    QStringList order;
    for (const ChecklistItem &item : await(database().checklistItems(u"A"_s)))
        order.append(item.id);
    EXPECT_EQ(order, (QStringList{u"one"_s, u"two"_s, u"three"_s}));
    EXPECT_EQ(await(database().checklistProgress()), (QHash<QString, ChecklistProgress>{{u"A"_s, {2, 3}}}));
    await(database().deleteChecklistItem(u"three"_s));
    await(database().setChecklistItemDone(false, u"one"_s));
    EXPECT_EQ(await(database().nextChecklistOrder(u"A"_s)), 2.0);
    EXPECT_EQ(await(database().checklistProgress()).value(u"A"_s), (ChecklistProgress{0, 2}));
}

TEST_F(TaxonomyStoreTest, TagsAreFoundWhateverTheirCaseAndStoredTrimmed)
{
    const Tag urgent = await(database().findOrCreateTag(u"  Urgent\n"_s));
    EXPECT_EQ(urgent.name, u"Urgent"_s);
    EXPECT_EQ(await(database().findOrCreateTag(u"urgent"_s)), urgent);
    EXPECT_EQ(await(database().findOrCreateTag(u"URGENT "_s)), urgent);
    // Case folding covers ASCII letters only: an accented capital makes another tag.
    const Tag upper = await(database().findOrCreateTag(u"\u00c9cole"_s));
    const Tag lower = await(database().findOrCreateTag(u"\u00e9cole"_s));
    EXPECT_NE(upper.id, lower.id);
    EXPECT_EQ(lower.name, u"\u00e9cole"_s);
}

TEST_F(TaxonomyStoreTest, NewTagsAreDealtThePaletteByHowManyExist)
{
    const auto &palette = ProjectPalette::orderedSlots();
    QList<Tag> tags;
    for (int i = 0; i < 9; ++i) {
        tags.append(await(database().findOrCreateTag(u"tag %1"_s.arg(i))));
        EXPECT_EQ(tags.last().color, palette.at(i % 8).light) << "tag " << i;
    }
    // Eight remain after a deletion, so the next new tag repeats the colour of slot 0.
    await(database().deleteTag(tags.at(3).id));
    EXPECT_EQ(await(database().findOrCreateTag(u"tag 9"_s)).color, palette.at(0).light);
}

} // namespace
