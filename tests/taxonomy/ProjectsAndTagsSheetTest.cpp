#include "BoardFixture.h"
#include "ProjectPalette.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

const QString blue = u"#2A78D6"_s;

// The sheet as the board shows it: declared in a window over a real board, open while the board
// manages its taxonomy.
class ProjectsAndTagsSheetTest : public BoardFixture {
protected:
    void SetUp() override
    {
        BoardFixture::SetUp();
        showInWindow("ProjectsAndTagsSheet { model: host.board }", {640, 640});
        // The fields of the sheet take the keyboard only in the window that has it.
        m_window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    }

    QObject *sheet() const { return m_window->findChild<QObject *>(u"projectsAndTagsSheet"_s); }

    void openSheet()
    {
        await(board().reload());
        board().setIsManagingTaxonomy(true);
        ASSERT_TRUE(QTest::qWaitFor([&] { return sheet()->property("opened").toBool(); }));
    }

    // The visible items of that name, top to bottom.
    QList<QQuickItem *> rows(const QString &name) const
    {
        QList<QQuickItem *> found = itemsNamed(m_window->contentItem(), name);
        found.removeIf([](QQuickItem *row) { return !row->isVisible(); });
        std::ranges::sort(found, {}, [](QQuickItem *row) { return row->mapToScene({}).y(); });
        return found;
    }

    // The item called `name` inside the row of the project called `project`.
    QQuickItem *inProjectRow(const QString &project, const QString &name) const
    {
        for (QQuickItem *row : rows(u"projectRow"_s))
            if (row->property("project").toMap().value(u"name"_s) == project)
                return itemsNamed(row, name).value(0);
        return nullptr;
    }

    void click(QQuickItem *target, bool twice = false) const
    {
        ASSERT_NE(target, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([&] { return target->isVisible() && target->width() > 0; }));
        const QPoint centre = target->mapToScene({target->width() / 2, target->height() / 2}).toPoint();
        if (twice)
            QTest::mouseDClick(m_window.get(), Qt::LeftButton, {}, centre);
        else
            QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centre);
    }

    [[nodiscard]] std::optional<Project> projectNamed(const QString &name)
    {
        const auto found = std::ranges::find(board().projects(), name, &Project::name);
        return found == board().projects().cend() ? std::nullopt : std::optional(*found);
    }

    [[nodiscard]] QString newProjectColor() const
    {
        return item(u"newProjectColor"_s)->property("selection").toString();
    }
};

// Return in the field adds the project and is not taken for "Done"; names are trimmed, a blank one
// makes nothing, and each project made takes the next palette colour.
TEST_F(ProjectsAndTagsSheetTest, ProjectsMadeInARowAreDealtTheNextColour)
{
    openSheet();
    const QList<ProjectPalette::Slot> &palette = ProjectPalette::orderedSlots();
    const struct {
        QString typed;
        std::optional<QString> created;
    } cases[] = {{u"  \n\t "_s, {}}, {u"  Garden \n"_s, u"Garden"_s}, {u"\tAttic"_s, u"Attic"_s}};
    qsizetype made = 0;
    for (const auto &[typed, created] : cases) {
        SCOPED_TRACE(typed.toStdString());
        QQuickItem *field = item(u"newProjectNameField"_s);
        field->setProperty("text", typed);
        EXPECT_EQ(item(u"addProjectButton"_s)->isEnabled(), created.has_value());
        field->forceActiveFocus();
        QTest::keyClick(m_window.get(), Qt::Key_Return);
        await(board().reload());

        EXPECT_TRUE(sheet()->property("opened").toBool());
        ASSERT_EQ(board().projects().size(), made + (created ? 1 : 0));
        if (created) {
            EXPECT_EQ(projectNamed(*created)->color, palette.at(made++).light);
            EXPECT_EQ(field->property("text").toString(), QString());
        }
        EXPECT_EQ(newProjectColor(), palette.at(made).light);
        EXPECT_EQ(item(u"noProjectsNote"_s)->isVisible(), made == 0);
    }
}

TEST_F(ProjectsAndTagsSheetTest, DeletingAProjectAsksFirstAndKeepsItsCards)
{
    addFolders({u"A"_s, u"B"_s});
    const struct {
        QString project;
        QString card;
        QString button;
        bool deleted;
    } cases[] = {{u"Work"_s, u"A"_s, u"cancelDeleteButton"_s, false}, {u"Home"_s, u"B"_s, u"confirmDeleteButton"_s, true}};
    for (const auto &[project, card, button, deleted] : cases) {
        SCOPED_TRACE(button.toStdString());
        await(board().createProject(project, blue));
        await(board().setProject(projectNamed(project)->id, cardNamed(card)->id));
        openSheet();

        click(inProjectRow(project, u"deleteProjectButton"_s));
        QObject *confirmation = m_window->findChild<QObject *>(u"projectDeletion"_s);
        ASSERT_TRUE(QTest::qWaitFor([&] { return confirmation->property("opened").toBool(); }));
        EXPECT_EQ(confirmation->property("title").toString(), u"Delete “%1”?"_s.arg(project));
        await(board().reload());
        ASSERT_TRUE(projectNamed(project)) << "nothing is deleted before the answer";

        click(item(button));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !confirmation->property("visible").toBool(); }));
        await(board().reload());
        EXPECT_EQ(projectNamed(project).has_value(), !deleted);
        ASSERT_TRUE(cardNamed(card)) << "a card is never removed with its project";
        EXPECT_EQ(cardNamed(card)->projectID.has_value(), !deleted);
        EXPECT_EQ(sheet()->property("projectPendingDeletion").toMap(), QVariantMap());
    }
}

TEST_F(ProjectsAndTagsSheetTest, RenamingTrimsAndABlankNameCancels)
{
    const struct {
        QString typed;
        QString name; // what the project is called afterwards
        bool fails;
    } cases[] = {
        {u"  Office \n"_s, u"Office"_s, false},
        {u"   "_s, u"Office"_s, false},
        {u"office"_s, u"office"_s, false}, // only the exact name is unique
        {u"Home"_s, u"office"_s, true},    // taken: the store refuses, the board reports
    };
    await(board().createProject(u"Work"_s, u"#EB6834"_s));
    await(board().createProject(u"Home"_s, blue));
    QString current = u"Work"_s;
    for (const auto &[typed, name, fails] : cases) {
        SCOPED_TRACE(typed.toStdString());
        openSheet();
        click(inProjectRow(current, u"projectName"_s), true);
        QQuickItem *field = inProjectRow(current, u"projectNameField"_s);
        ASSERT_TRUE(QTest::qWaitFor([&] { return field->hasActiveFocus(); }));
        EXPECT_EQ(field->property("text").toString(), current);
        field->setProperty("text", typed);
        QTest::keyClick(m_window.get(), Qt::Key_Return);
        EXPECT_FALSE(field->isVisible());
        if (fails)
            ASSERT_TRUE(QTest::qWaitFor([&] { return !board().errorMessageText().isEmpty(); }));
        else
            await(board().reload());

        ASSERT_TRUE(projectNamed(name)) << "the project is called " << name.toStdString();
        EXPECT_EQ(projectNamed(name)->color, u"#EB6834"_s) << "renaming keeps the colour";
        EXPECT_TRUE(sheet()->property("opened").toBool());
        current = name;
    }
}

TEST_F(ProjectsAndTagsSheetTest, TheColourMenuMarksTheSelectionAndRecolours)
{
    await(board().createProject(u"Work"_s, u"#123456"_s));
    openSheet();
    // Opens the menu of the project's row and answers which entries are marked.
    const auto openMenu = [&] {
        click(inProjectRow(u"Work"_s, u"projectColor"_s));
        EXPECT_TRUE(QTest::qWaitFor([&] { return rows(u"colorEntryGreen"_s).size() == 1; }));
        QStringList marked;
        for (const auto &slot : ProjectPalette::orderedSlots())
            for (QQuickItem *entry : rows(u"colorEntry"_s + slot.name))
                if (entry->property("isSelection").toBool())
                    marked.append(slot.name);
        return marked;
    };
    EXPECT_TRUE(openMenu().isEmpty()) << "a colour outside the palette marks no entry";

    click(rows(u"colorEntryGreen"_s).value(0));
    ASSERT_TRUE(QTest::qWaitFor([&] { return projectNamed(u"Work"_s)->color == u"#008300"_s; }));
    EXPECT_EQ(projectNamed(u"Work"_s)->name, u"Work"_s) << "recolouring keeps the name";
    EXPECT_EQ(openMenu(), QStringList{u"Green"_s});
}

TEST_F(ProjectsAndTagsSheetTest, TagsShowHowManyCardsCarryThem)
{
    addFolders({u"A"_s, u"B"_s});
    await(board().addTag(u"urgent"_s, *cardNamed(u"A"_s)));
    await(board().addTag(u"urgent"_s, *cardNamed(u"B"_s)));
    await(board().addTag(u"old"_s, *cardNamed(u"A"_s)));
    // Taken off its only card, a tag stays, unused.
    await(board().removeTag(std::ranges::find(board().tags(), u"old"_s, &Tag::name)->id, cardNamed(u"A"_s)->id));
    openSheet();

    QStringList shown;
    for (QQuickItem *row : rows(u"tagRow"_s)) {
        shown.append(itemsNamed(row, u"tagName"_s).value(0)->property("text").toString() + u' '
                     + itemsNamed(row, u"tagCardCount"_s).value(0)->property("text").toString()
                     + (itemsNamed(row, u"tagUnused"_s).value(0)->isVisible() ? u" unused"_s : QString()));
    }
    EXPECT_EQ(shown, (QStringList{u"old 0 unused"_s, u"urgent 2"_s}));
    EXPECT_EQ(item(u"unusedTagCount"_s)->property("text").toString(), u"1 unused"_s);
}

TEST_F(ProjectsAndTagsSheetTest, ClosingEndsManagingAndTheNextOpeningStartsAtBlue)
{
    const struct {
        const char *how;
        std::function<void()> close;
    } cases[] = {
        {"Done", [&] { click(item(u"doneButton"_s)); }},
        {"Escape", [&] { QTest::keyClick(m_window.get(), Qt::Key_Escape); }},
        {"the board", [&] { board().setIsManagingTaxonomy(false); }},
    };
    for (const auto &[how, close] : cases) {
        SCOPED_TRACE(how);
        openSheet();
        item(u"newProjectNameField"_s)->setProperty("text", u"Draft"_s);
        sheet()->setProperty("newProjectColor", u"#E34948"_s);
        close();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !sheet()->property("visible").toBool(); }));
        EXPECT_FALSE(board().isManagingTaxonomy());
        openSheet();
        EXPECT_EQ(item(u"newProjectNameField"_s)->property("text").toString(), QString());
        EXPECT_EQ(newProjectColor(), blue);
        board().setIsManagingTaxonomy(false);
    }
}

} // namespace
