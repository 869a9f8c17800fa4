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

    [[nodiscard]] bool shows(const QString &name) const { return find(name) && find(name)->isVisible(); }

    // The chips in the order they stand.
    [[nodiscard]] QList<QQuickItem *> chips() const
    {
        QList<QQuickItem *> chips = find(u"chipRow"_s)->childItems();
        chips.removeIf([](const QQuickItem *child) { return child->objectName() != u"filterChip"_s; });
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

    // The shown lines of the open menu by what they read: a doubled ampersand shows as one, and a
    // separator reads as "".
    [[nodiscard]] QList<std::pair<QString, QQuickItem *>> menuLines() const
    {
        QList<std::pair<QString, QQuickItem *>> lines;
        for (int i = 0; i < menu()->property("count").toInt(); ++i) {
            QQuickItem *line = nullptr;
            QMetaObject::invokeMethod(menu(), "itemAt", Q_RETURN_ARG(QQuickItem *, line), Q_ARG(int, i));
            if (line && line->isVisible())
                lines.append({line->property("text").toString().replace(u"&&"_s, u"&"_s), line});
        }
        return lines;
    }

    [[nodiscard]] QQuickItem *menuLine(const QString &text) const
    {
        for (const auto &[shown, line] : menuLines())
            if (shown == text)
                return line;
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

TEST_F(FilterBarTest, ChipRowAndCountFollowTheRestrictionsAndAChipLiftsOnlyItsOwn)
{
    EXPECT_FALSE(shows(u"chipRow"_s));
    EXPECT_FALSE(shows(u"filterCountBadge"_s));
    board().setSearchText(u"report"_s); // a search makes no chip
    board().setPriorityShown(0, true);
    board().setPriorityShown(4, true);
    board().setSortByPriority(true);
    EXPECT_EQ(find(u"filterCount"_s)->property("text").toString(), u"3"_s);
    ASSERT_EQ(chipLabels(), (QStringList{u"Priority: Now"_s, u"Priority: Later"_s, u"Sorted by priority"_s}));

    click(chips().at(1));
    ASSERT_TRUE(QTest::qWaitFor([&] { return chips().size() == 2; }));
    EXPECT_EQ(board().selectedPriorities(), QVariantList{0});
    EXPECT_TRUE(board().sortByPriority());
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
}

TEST_F(FilterBarTest, ModeSwitchGroupToggleAndAddFolderReachTheModel)
{
    const auto clickOn = [this](const char *name) { return [this, name] { click(find(QString::fromLatin1(name))); }; };
    const struct {
        const char *name;
        std::function<void()> act;
        BoardMode mode;
        bool grouped;
    } steps[] = {
        {"click Due Soon", clickOn("dueSoonModeSegment"), BoardMode::dueSoon, false},
        {"left arrow", [this] { QTest::keyClick(m_window.get(), Qt::Key_Left); }, BoardMode::board, false},
        {"right arrow", [this] { QTest::keyClick(m_window.get(), Qt::Key_Right); }, BoardMode::dueSoon, false},
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

    click(find(u"addFolderButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return picker().requests.size() == 1; }));
}

TEST_F(FilterBarTest, MenuLinesOfProjectsAndTagsAppearAsTheyAreMadeAndSetTheModel)
{
    openMenu();
    EXPECT_TRUE(menuLine(u"No tags yet"_s));

    // Projects and tags made while the menu is open take their places in their groups.
    addFolders({u"A"_s});
    await(board().createProject(u"Work"_s, u"#2A78D6"_s));
    await(board().addTag(u"urgent"_s, *cardNamed(u"A"_s)));
    QStringList texts;
    for (const auto &[text, line] : menuLines())
        texts.append(text);
    EXPECT_EQ(texts.mid(texts.indexOf(u"No Project"_s), 4), (QStringList{u"No Project"_s, {}, u"Work"_s, {}}));
    EXPECT_EQ(texts.mid(texts.indexOf(u"Tags"_s), 3), (QStringList{u"Tags"_s, u"urgent"_s, {}}));
    QMetaObject::invokeMethod(menu(), "close");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !menu()->property("visible").toBool(); }));

    const struct {
        QString line;
        QStringList chips;
    } steps[] = {
        {u"Work"_s, {u"Work"_s}},
        {u"No Project"_s, {u"No Project"_s}},
        {u"No Project"_s, {u"No Project"_s}}, // choosing the chosen project again keeps it
        {u"All Projects"_s, {}},
        {u"urgent"_s, {u"urgent"_s}},
        {u"Complete"_s, {u"urgent"_s, u"1 column hidden"_s}},
        {u"Sort columns by priority"_s, {u"urgent"_s, u"1 column hidden"_s, u"Sorted by priority"_s}},
    };
    for (const auto &step : steps) {
        SCOPED_TRACE(step.line.toStdString());
        chooseFromMenu(step.line);
        EXPECT_EQ(chipLabels(), step.chips);
    }
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
