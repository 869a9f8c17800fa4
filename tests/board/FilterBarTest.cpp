#include "BoardFixture.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The filter bar over a real board, in a shown window, so that it is clicked and typed into as a
// user would.
class FilterBarTest : public BoardFixture {
protected:
    void SetUp() override
    {
        BoardFixture::SetUp();
        // Tall enough for the whole filter menu to open without scrolling.
        showInWindow("FilterBar { objectName: \"filterBar\"; width: parent.width; model: host.board }", {1000, 1400});
        m_bar = item(u"filterBar"_s);
        ASSERT_NE(m_bar, nullptr);
    }

    [[nodiscard]] QQuickItem *find(const QString &name) const
    {
        QQuickItem *found = itemNamed(m_bar, name);
        if (!found)
            ADD_FAILURE() << "nothing named " << name.toStdString();
        return found;
    }

    [[nodiscard]] bool shows(const QString &name) const
    {
        const QQuickItem *item = find(name);
        return item && item->isVisible();
    }

    [[nodiscard]] QString countText() const { return find(u"filterCount"_s)->property("text").toString(); }

    // The chips in the order they stand, once the row has laid them out.
    [[nodiscard]] QList<QQuickItem *> chips() const
    {
        QList<QQuickItem *> chips;
        for (QQuickItem *child : find(u"chipRow"_s)->childItems()) {
            if (child->objectName() == u"filterChip"_s)
                chips.append(child);
        }
        return chips;
    }

    [[nodiscard]] QStringList chipLabels() const
    {
        QStringList labels;
        for (const QQuickItem *chip : chips())
            labels.append(chip->property("label").toString());
        return labels;
    }

    // Clicks the middle of an item once it is shown and laid out.
    void click(QQuickItem *item)
    {
        ASSERT_NE(item, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([&] { return item->isVisible() && item->width() > 0 && item->height() > 0; }));
        QTest::qWait(50);
        const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centre.toPoint());
    }

    [[nodiscard]] QObject *menu() const { return m_bar->findChild<QObject *>(u"filterMenu"_s); }

    void openMenu()
    {
        click(find(u"filterButton"_s));
        ASSERT_TRUE(QTest::qWaitFor([&] { return menu()->property("opened").toBool(); }));
    }

    // The lines of the open menu in order, hidden ones left out.
    [[nodiscard]] QList<QQuickItem *> menuLines() const
    {
        QList<QQuickItem *> lines;
        const int count = menu()->property("count").toInt();
        for (int i = 0; i < count; ++i) {
            QQuickItem *line = nullptr;
            QMetaObject::invokeMethod(menu(), "itemAt", Q_RETURN_ARG(QQuickItem *, line), Q_ARG(int, i));
            if (line && line->isVisible())
                lines.append(line);
        }
        return lines;
    }

    // What a line reads: a doubled ampersand shows as one, and a separator reads as "".
    [[nodiscard]] static QString shownText(const QQuickItem *line)
    {
        return line->property("text").toString().replace(u"&&"_s, u"&"_s);
    }

    [[nodiscard]] QStringList menuTexts() const
    {
        QStringList texts;
        for (const QQuickItem *line : menuLines())
            texts.append(shownText(line));
        return texts;
    }

    [[nodiscard]] QQuickItem *menuLine(const QString &text) const
    {
        for (QQuickItem *line : menuLines()) {
            if (shownText(line) == text)
                return line;
        }
        ADD_FAILURE() << "no menu line " << text.toStdString();
        return nullptr;
    }

    void chooseFromMenu(const QString &text)
    {
        openMenu();
        click(menuLine(text));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !menu()->property("visible").toBool(); }));
    }

    QQuickItem *m_bar = nullptr;
};

TEST_F(FilterBarTest, ChipRowAndCountFollowTheRestrictions)
{
    const struct {
        const char *name;
        std::function<void(BoardModel &)> restrict;
        QStringList chips;
    } cases[] = {
        {"nothing restricted", [](BoardModel &) {}, {}},
        {"a search makes no chip", [](BoardModel &b) { b.setSearchText(u"report"_s); }, {}},
        {"sorting narrows nothing but counts", [](BoardModel &b) { b.setSortByPriority(true); },
         {u"Sorted by priority"_s}},
        {"two restrictions", [](BoardModel &b) { b.setStatusVisible(3, false); b.setPriorityShown(0, true); },
         {u"Priority: Now"_s, u"1 column hidden"_s}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        board().clearAllFilters();
        c.restrict(board());
        EXPECT_EQ(shows(u"chipRow"_s), !c.chips.isEmpty());
        EXPECT_EQ(shows(u"filterCountBadge"_s), !c.chips.isEmpty());
        EXPECT_EQ(countText(), c.chips.isEmpty() ? QString() : QString::number(c.chips.size()));
        EXPECT_EQ(chipLabels(), c.chips);
    }
}

TEST_F(FilterBarTest, ClickingAChipLiftsOnlyItsRestriction)
{
    board().setPriorityShown(0, true);
    board().setPriorityShown(4, true);
    board().setSortByPriority(true);
    ASSERT_EQ(chips().size(), 3);
    click(chips().at(1));
    ASSERT_TRUE(QTest::qWaitFor([&] { return chips().size() == 2; }));
    EXPECT_EQ(board().selectedPriorities(), QVariantList{0});
    EXPECT_TRUE(board().sortByPriority());
    EXPECT_EQ(chipLabels(), (QStringList{u"Priority: Now"_s, u"Sorted by priority"_s}));
}

TEST_F(FilterBarTest, ChipsOfADeletedProjectAndOfTagsCarryTheirDots)
{
    addFolders({u"A"_s});
    await(board().createProject(u"Work"_s, u"#2A78D6"_s));
    await(board().addTag(u"urgent"_s, *cardNamed(u"A"_s)));
    const QString projectID = board().projects().first().id;
    board().setProjectFilter(u"project"_s, projectID);
    board().setTagShown(board().tags().first().id, true);
    ASSERT_EQ(chipLabels(), (QStringList{u"Work"_s, u"urgent"_s}));
    for (const QQuickItem *chip : chips())
        EXPECT_TRUE(itemNamed(chip, u"chipDot"_s)->isVisible());

    // Gone through another way than the model's own delete, which also lifts the restriction.
    await(database().deleteProject(projectID));
    await(board().reload());
    ASSERT_EQ(chipLabels(), (QStringList{u"Project"_s, u"urgent"_s}));
    EXPECT_FALSE(itemNamed(chips().first(), u"chipDot"_s)->isVisible());
}

TEST_F(FilterBarTest, TypingSearchesAndEitherWayOfClearingEmptiesTheField)
{
    const struct {
        const char *name;
        std::function<void()> clear;
    } cases[] = {
        {"the clear button", [this] { click(find(u"clearSearchButton"_s)); }},
        {"Escape", [this] { QTest::keyClick(m_window.get(), Qt::Key_Escape); }},
    };
    QQuickItem *field = find(u"searchField"_s);
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_FALSE(shows(u"clearSearchButton"_s));
        click(field);
        ASSERT_TRUE(QTest::qWaitFor([&] { return field->hasActiveFocus(); }));
        for (const char key : "report"_ba)
            QTest::keyClick(m_window.get(), key);
        EXPECT_EQ(board().searchText(), u"report"_s);
        EXPECT_TRUE(shows(u"clearSearchButton"_s));

        c.clear();
        EXPECT_EQ(board().searchText(), QString());
        EXPECT_EQ(field->property("text").toString(), QString());
        EXPECT_FALSE(shows(u"clearSearchButton"_s));
    }
}

TEST_F(FilterBarTest, ClearAllLiftsEveryRestrictionButKeepsTheWayOfLooking)
{
    board().setSearchText(u"report"_s);
    board().setSortByPriority(true);
    board().setPriorityShown(2, true);
    board().setStatusVisible(1, false);
    board().setProjectFilter(u"unassigned"_s, {});
    board().setGroupByProject(true);
    board().setMode(BoardMode::dueSoon);

    click(find(u"clearAllButton"_s));
    EXPECT_EQ(board().filter(), BoardFilter{});
    EXPECT_FALSE(board().sortByPriority());
    EXPECT_TRUE(board().groupByProject());
    EXPECT_EQ(board().mode(), BoardMode::dueSoon);
    EXPECT_EQ(find(u"searchField"_s)->property("text").toString(), QString());
    EXPECT_FALSE(shows(u"chipRow"_s));
    EXPECT_FALSE(shows(u"filterCountBadge"_s));
}

TEST_F(FilterBarTest, ModeSwitchAndGroupToggleSetTheModel)
{
    const auto clickOn = [this](const char *name) { return [this, name] { click(find(QString::fromLatin1(name))); }; };
    const auto press = [this](Qt::Key key) { return [this, key] { QTest::keyClick(m_window.get(), key); }; };
    const struct {
        const char *name;
        std::function<void()> act;
        BoardMode mode;
        bool grouped;
    } steps[] = {
        {"click Due Soon", clickOn("dueSoonModeSegment"), BoardMode::dueSoon, false},
        {"click Due Soon again", clickOn("dueSoonModeSegment"), BoardMode::dueSoon, false},
        {"left arrow", press(Qt::Key_Left), BoardMode::board, false},
        {"right arrow", press(Qt::Key_Right), BoardMode::dueSoon, false},
        {"group", clickOn("groupByProjectToggle"), BoardMode::dueSoon, true},
        {"click Board", clickOn("boardModeSegment"), BoardMode::board, true},
        {"ungroup", clickOn("groupByProjectToggle"), BoardMode::board, false},
    };
    for (const auto &step : steps) {
        SCOPED_TRACE(step.name);
        step.act();
        EXPECT_EQ(board().mode(), step.mode);
        EXPECT_EQ(board().groupByProject(), step.grouped);
    }
    // Set elsewhere, the toggle follows even after the user has toggled it.
    board().setGroupByProject(true);
    EXPECT_TRUE(find(u"groupByProjectToggle"_s)->property("checked").toBool());
}

TEST_F(FilterBarTest, AddFolderShowsTheFolderPanel)
{
    click(find(u"addFolderButton"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !picker().requests.isEmpty(); }));
    EXPECT_EQ(picker().requests.size(), 1);
}

TEST_F(FilterBarTest, MenuListsItsGroupsInOrder)
{
    openMenu();
    const QStringList priorities{u"Now"_s, u"Next"_s, u"Today"_s, u"This Week"_s, u"Later"_s};
    const QStringList columns{u"Not Started"_s, u"In Progress"_s, u"Waiting on Others"_s, u"Complete"_s,
                              u"Sort columns by priority"_s};
    const auto expected = [&](const QStringList &projects, const QStringList &tags) {
        return QStringList{u"Project"_s, u"All Projects"_s, u"No Project"_s, {}} + projects
               + QStringList{{}, u"Priority"_s} + priorities + QStringList{{}, u"Tags"_s} + tags
               + QStringList{{}, u"Columns"_s} + columns + QStringList{{}, u"Manage Projects & Tags…"_s};
    };
    EXPECT_EQ(menuTexts(), expected({}, {u"No tags yet"_s}));

    // Projects and tags made while the menu exists take their places in their groups.
    addFolders({u"A"_s});
    await(board().createProject(u"Work"_s, u"#2A78D6"_s));
    await(board().createProject(u"Home"_s, u"#E34948"_s));
    await(board().addTag(u"urgent"_s, *cardNamed(u"A"_s)));
    QStringList projects;
    for (const Project &project : board().projects())
        projects.append(project.name);
    EXPECT_EQ(menuTexts(), expected(projects, {u"urgent"_s}));
}

TEST_F(FilterBarTest, MenuLinesSetTheModel)
{
    addFolders({u"A"_s});
    await(board().createProject(u"Work"_s, u"#2A78D6"_s));
    await(board().addTag(u"urgent"_s, *cardNamed(u"A"_s)));
    const struct {
        QString line;
        QStringList chips;
    } steps[] = {
        {u"Work"_s, {u"Work"_s}},
        {u"No Project"_s, {u"No Project"_s}},
        // Choosing the chosen project again keeps it.
        {u"No Project"_s, {u"No Project"_s}},
        {u"All Projects"_s, {}},
        {u"Later"_s, {u"Priority: Later"_s}},
        {u"urgent"_s, {u"Priority: Later"_s, u"urgent"_s}},
        {u"Complete"_s, {u"Priority: Later"_s, u"urgent"_s, u"1 column hidden"_s}},
        {u"Later"_s, {u"urgent"_s, u"1 column hidden"_s}},
        {u"Sort columns by priority"_s, {u"urgent"_s, u"1 column hidden"_s, u"Sorted by priority"_s}},
    };
    for (const auto &step : steps) {
        SCOPED_TRACE(step.line.toStdString());
        chooseFromMenu(step.line);
        EXPECT_EQ(chipLabels(), step.chips);
    }
    EXPECT_FALSE(board().isManagingTaxonomy());
    chooseFromMenu(u"Manage Projects & Tags…"_s);
    EXPECT_TRUE(board().isManagingTaxonomy());
}

TEST_F(FilterBarTest, ClearingAChipUnticksItsMenuLineEvenAfterTheUserTickedIt)
{
    chooseFromMenu(u"Now"_s);
    ASSERT_EQ(board().selectedPriorities(), QVariantList{0});
    click(chips().first());
    ASSERT_TRUE(board().selectedPriorities().isEmpty());
    openMenu();
    EXPECT_FALSE(menuLine(u"Now"_s)->property("checked").toBool());
    click(menuLine(u"Now"_s));
    EXPECT_EQ(board().selectedPriorities(), QVariantList{0});
}

} // namespace
