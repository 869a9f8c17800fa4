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

    void addItem(const QString &id, double sortOrder, bool isDone = false)
    {
        await(database().insertChecklistItem({id, u"A"_s, id.toUtf8(), id + u".md"_s, isDone, false, sortOrder}));
    }
};

TEST_F(TaxonomyStoreTest, ChecklistKeepsItsOrderAndCountsWhatIsDone)
{
    EXPECT_EQ(await(database().nextChecklistOrder(u"A"_s)), 0.0);
    addItem(u"one"_s, 0, true);
    addItem(u"three"_s, 2, true);
    addItem(u"two"_s, 1);
    QStringList order;
    for (const ChecklistItem &item : await(database().checklistItems(u"A"_s)))
        order.append(item.id);
    EXPECT_EQ(order, (QStringList{u"one"_s, u"two"_s, u"three"_s}));
    EXPECT_EQ(await(database().checklistProgress()), (QHash<QString, ChecklistProgress>{{u"A"_s, {2, 3}}}));
    EXPECT_EQ(await(database().nextChecklistOrder(u"A"_s)), 3.0);
    await(database().deleteChecklistItem(u"three"_s));
    EXPECT_EQ(await(database().nextChecklistOrder(u"A"_s)), 2.0);
    await(database().setChecklistItemDone(false, u"one"_s));
    EXPECT_EQ(await(database().checklistProgress()).value(u"A"_s), (ChecklistProgress{0, 2}));
}

TEST_F(TaxonomyStoreTest, TagsAreFoundWhateverTheirCaseAndStoredTrimmed)
{
    const Tag urgent = await(database().findOrCreateTag(u"  Urgent\n"_s));
    EXPECT_EQ(urgent.name, u"Urgent"_s);
    const QList<std::pair<QString, QString>> cases{
        {u"urgent"_s, urgent.id}, {u"URGENT "_s, urgent.id}, {u"\u00c9cole"_s, {}}, {u"\u00e9cole"_s, {}}};
    for (const auto &[name, id] : cases) {
        SCOPED_TRACE(name.toStdString());
        const Tag tag = await(database().findOrCreateTag(name));
        if (id.isEmpty()) {
            // Case folding covers ASCII letters only: an accented capital makes another tag.
            EXPECT_NE(tag.id, urgent.id);
            EXPECT_EQ(tag.name, name);
        } else {
            EXPECT_EQ(tag, urgent);
        }
    }
    EXPECT_EQ(await(database().allTags()).size(), 3);
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

TEST_F(TaxonomyStoreTest, ListsAreInNameOrderWithoutRegardToCase)
{
    for (const QString &name : {u"beta"_s, u"Alpha"_s, u"Gamma"_s}) {
        await(database().insertProject({name, name, u"#2A78D6"_s}));
        await(database().findOrCreateTag(name));
    }
    QStringList projects;
    for (const Project &project : await(database().allProjects()))
        projects.append(project.name);
    QStringList tags;
    for (const Tag &tag : await(database().allTags()))
        tags.append(tag.name);
    EXPECT_EQ(projects, (QStringList{u"Alpha"_s, u"beta"_s, u"Gamma"_s}));
    EXPECT_EQ(tags, projects);
}

TEST_F(TaxonomyStoreTest, DeletingAProjectOrTagLetsGoOfItsCards)
{
    await(database().insertProject({u"P1"_s, u"Alpha"_s, u"#2A78D6"_s}));
    await(database().setProject(u"P1"_s, u"A"_s));
    const Tag tag = await(database().findOrCreateTag(u"Red"_s));
    await(database().attachTag(u"A"_s, tag.id));
    await(database().attachTag(u"A"_s, tag.id));
    EXPECT_EQ(await(database().tagLinks()), (QHash<QString, QSet<QString>>{{u"A"_s, {tag.id}}}));
    await(database().deleteProject(u"P1"_s));
    await(database().deleteTag(tag.id));
    EXPECT_EQ(await(database().card(u"A"_s))->projectID, std::nullopt);
    EXPECT_TRUE(await(database().tagLinks()).isEmpty());
}

} // namespace
