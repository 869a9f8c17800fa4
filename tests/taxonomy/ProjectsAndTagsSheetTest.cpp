#include "BoardFixture.h"
#include "ProjectPalette.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

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

    void openSheet()
    {
        await(board().reload());
        board().setIsManagingTaxonomy(true);
        ASSERT_TRUE(QTest::qWaitFor([&] { return object(u"projectsAndTagsSheet"_s)->property("opened").toBool(); }));
    }

    QObject *object(const QString &name) const { return m_window->findChild<QObject *>(name); }

    // The visible items of that name, top to bottom.
    QList<QQuickItem *> rows(const QString &name) const
    {
        QList<QQuickItem *> found = itemsNamed(m_window->contentItem(), name);
        found.removeIf([](QQuickItem *row) { return !row->isVisible(); });
        std::ranges::sort(found, {}, [](QQuickItem *row) { return row->mapToScene({}).y(); });
        return found;
    }

    QQuickItem *projectRow(const QString &name) const
    {
        for (QQuickItem *row : rows(u"projectRow"_s))
            if (row->property("project").toMap().value(u"name"_s) == name)
                return row;
        return nullptr;
    }

    static QQuickItem *inside(QQuickItem *row, const QString &name) { return itemsNamed(row, name).value(0); }

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

    // Lets whatever the sheet started reach the database, then reads it back.
    void settle() { await(board().reload()); }

    [[nodiscard]] std::optional<Project> projectNamed(const QString &name)
    {
        const auto found = std::ranges::find(board().projects(), name, &Project::name);
        return found == board().projects().cend() ? std::nullopt : std::optional(*found);
    }
};

TEST_F(ProjectsAndTagsSheetTest, ProjectsMadeInARowAreDealtTheNextColour)
{
    openSheet();
    // Names are trimmed of blanks and line breaks; the colours follow the palette (its wrapping
    // round is the palette's own test).
    const struct {
        QString typed;
        QString created;
    } cases[] = {{u"  Garden \n"_s, u"Garden"_s}, {u"Kitchen"_s, u"Kitchen"_s}, {u"\tAttic"_s, u"Attic"_s}};
    const QList<ProjectPalette::Slot> &palette = ProjectPalette::orderedSlots();
    for (qsizetype made = 0; made < qsizetype(std::size(cases)); ++made) {
        const auto &[typed, created] = cases[made];
        SCOPED_TRACE(created.toStdString());
        item(u"newProjectNameField"_s)->setProperty("text", typed);
        click(item(u"addProjectButton"_s));
        ASSERT_TRUE(QTest::qWaitFor([&] { return projectNamed(created).has_value(); }));
        EXPECT_EQ(projectNamed(created)->color, palette.at(made).light);
        EXPECT_EQ(item(u"newProjectNameField"_s)->property("text").toString(), QString());
        EXPECT_EQ(item(u"newProjectColor"_s)->property("selection").toString(),
                  palette.at(made + 1).light);
    }
    EXPECT_EQ(rows(u"projectRow"_s).size(), qsizetype(std::size(cases)));
    EXPECT_FALSE(item(u"noProjectsNote"_s)->isVisible());
}

TEST_F(ProjectsAndTagsSheetTest, ABlankNameMakesNoProject)
{
    openSheet();
    QQuickItem *field = item(u"newProjectNameField"_s);
    field->setProperty("text", u"  \n\t "_s);
    EXPECT_FALSE(item(u"addProjectButton"_s)->isEnabled());
    field->forceActiveFocus();
    QTest::keyClick(m_window.get(), Qt::Key_Return);
    settle();
    EXPECT_TRUE(board().projects().isEmpty());
    EXPECT_TRUE(item(u"noProjectsNote"_s)->isVisible());
    EXPECT_EQ(item(u"newProjectColor"_s)->property("selection").toString(), u"#2A78D6"_s);
    EXPECT_TRUE(object(u"projectsAndTagsSheet"_s)->property("opened").toBool()) << "Return in the field is not Done";
}

TEST_F(ProjectsAndTagsSheetTest, DeletingAProjectAsksFirstAndKeepsItsCards)
{
    const struct {
        QString project;
        QString card;
        QString button;
        bool deleted;
    } cases[] = {{u"Work"_s, u"A"_s, u"cancelDeleteButton"_s, false},
                 {u"Home"_s, u"B"_s, u"confirmDeleteButton"_s, true}};
    addFolders({u"A"_s, u"B"_s});
    for (const auto &[project, card, button, deleted] : cases) {
        SCOPED_TRACE(button.toStdString());
        await(board().createProject(project, u"#2A78D6"_s));
        await(board().setProject(projectNamed(project)->id, cardNamed(card)->id));
        openSheet();

        click(inside(projectRow(project), u"deleteProjectButton"_s));
        QObject *confirmation = object(u"projectDeletion"_s);
        ASSERT_TRUE(QTest::qWaitFor([&] { return confirmation->property("opened").toBool(); }));
        EXPECT_EQ(confirmation->property("title").toString(), u"Delete “%1”?"_s.arg(project));
        settle();
        ASSERT_TRUE(projectNamed(project)) << "nothing is deleted before the answer";

        click(item(button));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !confirmation->property("visible").toBool(); }));
        settle();
        EXPECT_EQ(projectNamed(project).has_value(), !deleted);
        ASSERT_TRUE(cardNamed(card)) << "a card is never removed with its project";
        EXPECT_EQ(cardNamed(card)->projectID.has_value(), !deleted);
        EXPECT_EQ(object(u"projectsAndTagsSheet"_s)->property("projectPendingDeletion").toMap(), QVariantMap());
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
    await(board().createProject(u"Home"_s, u"#2A78D6"_s));
    QString current = u"Work"_s;
    for (const auto &[typed, name, fails] : cases) {
        SCOPED_TRACE(typed.toStdString());
        openSheet();
        QQuickItem *row = projectRow(current);
        ASSERT_NE(row, nullptr);
        click(inside(row, u"projectName"_s), true);
        ASSERT_TRUE(QTest::qWaitFor([&] { return row->property("isEditing").toBool(); }));
        QQuickItem *field = inside(row, u"projectNameField"_s);
        ASSERT_TRUE(QTest::qWaitFor([&] { return field->hasActiveFocus(); }));
        EXPECT_EQ(field->property("text").toString(), current);
        field->setProperty("text", typed);
        QTest::keyClick(m_window.get(), Qt::Key_Return);
        EXPECT_FALSE(row->property("isEditing").toBool());
        if (fails) {
            ASSERT_TRUE(QTest::qWaitFor([&] { return !board().errorMessageText().isEmpty(); }))
                << "the refusal shows on the board";
        } else {
            settle();
        }

        ASSERT_TRUE(projectNamed(name)) << "the project is called " << name.toStdString();
        EXPECT_EQ(projectNamed(name)->color, u"#EB6834"_s) << "renaming keeps the colour";
        EXPECT_TRUE(object(u"projectsAndTagsSheet"_s)->property("opened").toBool());
        current = name;
    }
}

TEST_F(ProjectsAndTagsSheetTest, TheColourMenuMarksTheSelectionAndRecolours)
{
    await(board().createProject(u"Work"_s, u"#123456"_s));
    openSheet();
    // Opens the menu of the project's row and answers which entries are marked.
    const auto openMenu = [&] {
        click(inside(projectRow(u"Work"_s), u"projectColor"_s));
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

    const struct {
        QString name;
        QString count;
        bool unused;
    } expected[] = {{u"old"_s, u"0"_s, true}, {u"urgent"_s, u"2"_s, false}};
    const QList<QQuickItem *> tagRows = rows(u"tagRow"_s);
    ASSERT_EQ(tagRows.size(), qsizetype(std::size(expected)));
    for (qsizetype index = 0; index < tagRows.size(); ++index) {
        const auto &[name, count, unused] = expected[index];
        SCOPED_TRACE(name.toStdString());
        EXPECT_EQ(inside(tagRows[index], u"tagName"_s)->property("text").toString(), name);
        EXPECT_EQ(inside(tagRows[index], u"tagCardCount"_s)->property("text").toString(), count);
        EXPECT_EQ(inside(tagRows[index], u"tagUnused"_s)->isVisible(), unused);
    }
    EXPECT_EQ(item(u"unusedTagCount"_s)->property("text").toString(), u"1 unused"_s);
    EXPECT_FALSE(item(u"noTagsNote"_s)->isVisible());
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
        object(u"projectsAndTagsSheet"_s)->setProperty("newProjectColor", u"#E34948"_s);
        close();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !object(u"projectsAndTagsSheet"_s)->property("visible").toBool(); }));
        EXPECT_FALSE(board().isManagingTaxonomy());
        openSheet();
        EXPECT_EQ(item(u"newProjectNameField"_s)->property("text").toString(), QString());
        EXPECT_EQ(item(u"newProjectColor"_s)->property("selection").toString(), u"#2A78D6"_s);
        board().setIsManagingTaxonomy(false);
    }
}

} // namespace
