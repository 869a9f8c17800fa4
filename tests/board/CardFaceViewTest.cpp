#include <QColor>
#include <QDateTime>
#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// A face as the board gives it for an available card in progress, without deadline, project, tags
// or checklist; each case changes what it is about.
QVariantMap faceWith(const QVariantMap &changes = {})
{
    QVariantMap face{{u"cardID"_s, u"C0FFEE00-0000-4000-8000-000000000001"_s},
                     {u"title"_s, u"Thesis"_s},
                     {u"displayName"_s, u"Thesis"_s},
                     {u"displayPath"_s, QDir::homePath() + u"/Projects/Writing/Thesis"_s},
                     {u"hasCustomTitle"_s, false},
                     {u"status"_s, 1},
                     {u"priority"_s, 4},
                     {u"isMissing"_s, false},
                     {u"isComplete"_s, false},
                     {u"needsLocate"_s, false},
                     {u"deadline"_s, QDateTime()},
                     {u"projectID"_s, u""_s},
                     {u"projectName"_s, u""_s},
                     {u"projectColor"_s, u""_s},
                     {u"tags"_s, QVariantList()},
                     {u"progressDone"_s, 0},
                     {u"progressTotal"_s, 0},
                     {u"availability"_s, u"available"_s},
                     {u"failure"_s, u""_s}};
    for (auto change = changes.cbegin(); change != changes.cend(); ++change)
        face.insert(change.key(), change.value());
    return face;
}

// One card face in an engine of its own, its parts found by name.
class CardFace {
public:
    explicit CardFace(const QVariantMap &face, const QVariantMap &properties = {})
    {
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        QQmlComponent component(&m_engine);
        component.setData("import Velto\nCardFaceView { width: 280 }", QUrl());
        if (!component.isReady()) {
            ADD_FAILURE() << component.errorString().toStdString();
            return;
        }
        QVariantMap initial = properties;
        initial.insert(u"face"_s, face);
        m_card.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(initial)));
    }

    [[nodiscard]] QQuickItem *card() const { return m_card.get(); }

    // Puts the card in a window of its own, below a strip of empty space, so that it is laid out
    // and takes the pointer. The window goes with the face.
    bool showInWindow()
    {
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(400, 400);
        m_card->setParentItem(m_window->contentItem());
        m_card->setY(emptyStrip);
        m_window->show();
        return QTest::qWaitForWindowExposed(m_window.get());
    }

    [[nodiscard]] QQuickWindow *window() const { return m_window.get(); }

    static constexpr int emptyStrip = 100;

    [[nodiscard]] QQuickItem *part(const QString &name) const
    {
        QQuickItem *found = m_card ? m_card->findChild<QQuickItem *>(name) : nullptr;
        if (!found)
            ADD_FAILURE() << "no part named " << name.toStdString();
        return found;
    }

    [[nodiscard]] bool shows(const QString &name) const
    {
        const QQuickItem *found = part(name);
        return found && found->isVisible() && found->opacity() > 0;
    }

    [[nodiscard]] QVariant read(const QString &name, const char *property) const
    {
        const QQuickItem *found = part(name);
        return found ? found->property(property) : QVariant();
    }

    [[nodiscard]] QString text(const QString &name) const { return read(name, "text").toString(); }

    // The colour of a rectangle's outline.
    [[nodiscard]] QColor borderColor(const QString &name) const
    {
        const QObject *border = read(name, "border").value<QObject *>();
        return border ? border->property("color").value<QColor>() : QColor();
    }

private:
    QQmlEngine m_engine;
    std::unique_ptr<QQuickItem> m_card;
    std::unique_ptr<QQuickWindow> m_window;
};

TEST(CardFaceView, RepairChipSaysWhatIsWrongWithTheFolder)
{
    const QString missingHelp = u"The folder could not be found."_s;
    const QString locate = u" Choose Locate… to pick it again and restore access."_s;
    const struct {
        const char *name;
        QVariantMap changes;
        bool shown;
        QString symbol;
        QString label;
        QString help;
    } cases[] = {
        {"an available folder needs nothing", {}, false, {}, {}, {}},
        {"an unknown verdict needs nothing", {{u"availability"_s, u""_s}}, false, {}, {}, {}},
        {"a missing card",
         {{u"isMissing"_s, true}, {u"availability"_s, u"missing"_s}},
         true,
         u"questionmark.folder"_s,
         u"Folder missing"_s,
         missingHelp},
        {"a missing card says why when it is known",
         {{u"isMissing"_s, true}, {u"availability"_s, u"missing"_s}, {u"failure"_s, u"It was moved to the Trash."_s}},
         true,
         u"questionmark.folder"_s,
         u"Folder missing"_s,
         u"It was moved to the Trash."_s},
        {"missing outranks unreachable",
         {{u"isMissing"_s, true}, {u"availability"_s, u"unreachable"_s}},
         true,
         u"questionmark.folder"_s,
         u"Folder missing"_s,
         missingHelp},
        {"an unreachable folder",
         {{u"availability"_s, u"unreachable"_s}},
         true,
         u"lock.slash"_s,
         u"No access"_s,
         u"Velto cannot read this folder right now."_s + locate},
        {"an unreachable folder says why, then what helps",
         {{u"availability"_s, u"unreachable"_s}, {u"failure"_s, u"Permission denied."_s}},
         true,
         u"lock.slash"_s,
         u"No access"_s,
         u"Permission denied."_s + locate},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const CardFace face(faceWith(c.changes));
        ASSERT_EQ(face.shows(u"repairChip"_s), c.shown);
        if (!c.shown)
            continue;
        EXPECT_EQ(face.read(u"repairChipSymbol"_s, "name").toString(), c.symbol);
        EXPECT_EQ(face.text(u"repairChipLabel"_s), c.label);
        EXPECT_EQ(face.read(u"repairChip"_s, "help").toString(), c.help);
    }
}

TEST(CardFaceView, PriorityMarkStandsBesideTheTitleExceptForLater)
{
    const struct {
        int priority;
        bool shown;
        bool pill;
        QString symbol;
        QString help;
    } cases[] = {
        {0, true, true, u"flag.fill"_s, u"Priority: Now"_s},
        {1, true, false, u"flag"_s, u"Priority: Next"_s},
        {2, true, false, u"sun.max"_s, u"Priority: Today"_s},
        {3, true, false, u"calendar"_s, u"Priority: This Week"_s},
        {4, false, false, {}, {}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.priority);
        const CardFace face(faceWith({{u"priority"_s, c.priority}}));
        ASSERT_EQ(face.shows(u"priorityMark"_s), c.shown);
        if (!c.shown)
            continue;
        EXPECT_EQ(face.shows(u"priorityPill"_s), c.pill);
        EXPECT_EQ(face.shows(u"prioritySymbol"_s), !c.pill);
        EXPECT_EQ(face.read(u"priorityMark"_s, "symbolName").toString(), c.symbol);
        EXPECT_EQ(face.read(u"priorityMark"_s, "helpText").toString(), c.help);
        // The mark follows the title on the same row.
        EXPECT_GT(face.part(u"priorityMark"_s)->x(), face.part(u"cardTitle"_s)->x());
    }
}

TEST(CardFaceView, ProgressRowCountsTheChecklistOnlyWhenItHasItems)
{
    const struct {
        int done;
        int total;
        bool shown;
        QString count;
        QString help;
        double filled; // the share of the track the fill covers
    } cases[] = {
        {0, 0, false, {}, {}, 0},
        {0, 4, true, u"0/4"_s, u"0 of 4 checklist items done"_s, 0},
        {2, 5, true, u"2/5"_s, u"2 of 5 checklist items done"_s, 0.4},
        {5, 5, true, u"5/5"_s, u"5 of 5 checklist items done"_s, 1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.help.toStdString());
        const CardFace face(faceWith({{u"progressDone"_s, c.done}, {u"progressTotal"_s, c.total}}));
        ASSERT_EQ(face.shows(u"progressRow"_s), c.shown);
        if (!c.shown)
            continue;
        EXPECT_EQ(face.text(u"progressCount"_s), c.count);
        EXPECT_EQ(face.read(u"progressRow"_s, "helpText").toString(), c.help);
        const qreal track = face.part(u"progressTrack"_s)->width();
        ASSERT_GT(track, 0);
        EXPECT_NEAR(face.part(u"progressFill"_s)->width() / track, c.filled, 1e-9);
    }
}

TEST(CardFaceView, PathLineTellsNameProjectAndPlaceInThatOrder)
{
    const struct {
        const char *name;
        bool customTitle;
        QString projectName;
    } cases[] = {
        {"a plain card shows only where its folder is", false, {}},
        {"a custom title shows the folder's name first", true, {}},
        {"a project shows its dot and name", false, u"Research"_s},
        {"both, name before project", true, u"Research"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const bool hasProject = !c.projectName.isEmpty();
        const CardFace face(faceWith({{u"title"_s, c.customTitle ? u"My thesis"_s : u"Thesis"_s},
                                      {u"hasCustomTitle"_s, c.customTitle},
                                      {u"projectID"_s, hasProject ? u"P1"_s : u""_s},
                                      {u"projectName"_s, c.projectName},
                                      {u"projectColor"_s, hasProject ? u"#2A78D6"_s : u""_s}}));
        EXPECT_EQ(face.text(u"shortPath"_s), u"Projects/Writing"_s);
        EXPECT_EQ(face.read(u"pathLine"_s, "helpText").toString(), QDir::homePath() + u"/Projects/Writing/Thesis"_s);
        ASSERT_EQ(face.shows(u"pathName"_s), c.customTitle);
        ASSERT_EQ(face.shows(u"pathProjectDot"_s), hasProject);
        ASSERT_EQ(face.shows(u"pathProjectName"_s), hasProject);
        const qreal pathX = face.part(u"shortPath"_s)->x();
        if (c.customTitle) {
            EXPECT_EQ(face.text(u"pathName"_s), u"Thesis"_s);
            EXPECT_LT(face.part(u"pathName"_s)->x(), pathX);
        }
        if (hasProject) {
            EXPECT_EQ(face.text(u"pathProjectName"_s), c.projectName);
            EXPECT_EQ(face.read(u"pathProjectDot"_s, "color").toString(), u"#2A78D6"_s);
            EXPECT_LT(face.part(u"pathProjectDot"_s)->x(), face.part(u"pathProjectName"_s)->x());
            EXPECT_LT(face.part(u"pathProjectName"_s)->x(), pathX);
        }
        if (c.customTitle && hasProject) {
            EXPECT_LT(face.part(u"pathName"_s)->x(), face.part(u"pathProjectDot"_s)->x());
        }
    }
}

TEST(CardFaceView, DeadlineChipSaysWhenAndWarnsOnlyForOpenCards)
{
    const QDateTime now = QDateTime::currentDateTime();
    const struct {
        const char *name;
        QDateTime deadline;
        bool complete;
        bool shown;
        QString words;
        QString symbol;
        bool overdue;
    } cases[] = {
        {"no deadline, no chip", QDateTime(), false, false, {}, {}, false},
        {"overdue", now.addDays(-3), false, true, u"Overdue by 3 days"_s, u"exclamationmark.triangle.fill"_s, true},
        {"overdue but complete keeps its words, not its alarm",
         now.addDays(-3),
         true,
         true,
         u"Overdue by 3 days"_s,
         u"calendar"_s,
         false},
        {"near", now.addDays(1), false, true, u"Due tomorrow"_s, u"clock.badge.exclamationmark"_s, false},
        {"within the week", now.addDays(5), false, true, u"Due in 5 days"_s, u"calendar"_s, false},
        {"far off", now.addDays(30), false, true, u"Due in 30 days"_s, u"calendar"_s, false},
    };
    const CardFace plainOpen(faceWith());
    const CardFace plainComplete(faceWith({{u"isComplete"_s, true}, {u"status"_s, 3}}));
    const CardFace farOff(faceWith({{u"deadline"_s, now.addDays(30)}}));
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const CardFace face(faceWith({{u"deadline"_s, c.deadline},
                                      {u"isComplete"_s, c.complete},
                                      {u"status"_s, c.complete ? 3 : 1}}));
        ASSERT_EQ(face.shows(u"deadlineChip"_s), c.shown);
        const CardFace &plain = c.complete ? plainComplete : plainOpen;
        EXPECT_EQ(face.borderColor(u"cardBorder"_s) != plain.borderColor(u"cardBorder"_s), c.overdue);
        if (!c.shown)
            continue;
        EXPECT_EQ(face.text(u"deadlineChipText"_s), c.words);
        EXPECT_EQ(face.read(u"deadlineChip"_s, "symbolName").toString(), c.symbol);
        EXPECT_EQ(face.read(u"deadlineChip"_s, "helpText").toString(),
                  QLocale().toString(c.deadline.date(), QLocale::LongFormat));
        const bool plainChip = face.read(u"deadlineChip"_s, "fill") == farOff.read(u"deadlineChip"_s, "fill");
        EXPECT_EQ(plainChip, c.symbol == u"calendar"_s);
    }
}

TEST(CardFaceView, RunningRowShowsOnlyWhileTheTimerRunsHere)
{
    const struct {
        const char *name;
        bool running;
        bool canToggle;
        bool shown;
    } cases[] = {
        {"running", true, true, true},
        {"not running", false, true, false},
        {"running where the face cannot stop it", true, false, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const CardFace face(faceWith(), {{u"isTimerRunning"_s, c.running},
                                         {u"canToggleTimer"_s, c.canToggle},
                                         {u"elapsed"_s, 3909.2}});
        ASSERT_EQ(face.shows(u"runningSession"_s), c.shown);
        if (c.shown) {
            EXPECT_EQ(face.text(u"runningSessionText"_s), u"Tracking · 1:05:09"_s);
        }
        // The play button stands aside while the row's own stop button is there.
        EXPECT_EQ(face.part(u"playButton"_s)->isVisible(), c.canToggle && !c.running);
    }
}

TEST(CardFaceView, BothTimerButtonsAskForTheToggle)
{
    for (const bool running : {false, true}) {
        SCOPED_TRACE(running ? "stop" : "play");
        const CardFace face(faceWith(), {{u"isTimerRunning"_s, running}});
        QSignalSpy toggled(face.card(), SIGNAL(toggleTimer()));
        QQuickItem *button = face.part(running ? u"stopButton"_s : u"playButton"_s);
        ASSERT_NE(button, nullptr);
        QMetaObject::invokeMethod(button, "clicked");
        EXPECT_EQ(toggled.count(), 1);
    }
}

TEST(CardFaceView, PlayButtonAppearsWhileThePointerIsOverTheCard)
{
    CardFace face(faceWith());
    ASSERT_TRUE(face.showInWindow());
    QTest::mouseMove(face.window(), QPoint(200, CardFace::emptyStrip / 2));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !face.shows(u"playButton"_s); }));
    QTest::mouseMove(face.window(), QPoint(40, CardFace::emptyStrip + 20));
    EXPECT_TRUE(QTest::qWaitFor([&] { return face.shows(u"playButton"_s); }));
    QTest::mouseMove(face.window(), QPoint(200, CardFace::emptyStrip / 2));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !face.shows(u"playButton"_s); }));
}

TEST(CardFaceView, TagChipsFollowTheTagsInOrder)
{
    const QVariantList tags{QVariantMap{{u"id"_s, u"T1"_s}, {u"name"_s, u"draft"_s}, {u"color"_s, u"#E34948"_s}},
                            QVariantMap{{u"id"_s, u"T2"_s}, {u"name"_s, u"urgent"_s}, {u"color"_s, u"#2A78D6"_s}}};
    const CardFace none(faceWith());
    EXPECT_FALSE(none.shows(u"tagChips"_s));

    CardFace face(faceWith({{u"tags"_s, tags}}));
    ASSERT_TRUE(face.showInWindow());
    ASSERT_TRUE(face.shows(u"tagChips"_s));
    QList<QQuickItem *> chips;
    for (QQuickItem *child : face.part(u"tagChips"_s)->childItems())
        if (child->objectName() == u"tagChip"_s)
            chips.append(child);
    ASSERT_EQ(chips.size(), 2);
    EXPECT_EQ(chips[0]->property("name").toString(), u"draft"_s);
    EXPECT_EQ(chips[1]->property("name").toString(), u"urgent"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return chips[0]->x() + chips[0]->width() < chips[1]->x(); }));
    EXPECT_EQ(chips[0]->y(), chips[1]->y());
}

TEST(CardFaceView, SurfaceStepsBackForFinishedAndMissingCards)
{
    const CardFace open(faceWith());
    for (const auto &changes : {QVariantMap{{u"isComplete"_s, true}, {u"status"_s, 3}},
                                QVariantMap{{u"isMissing"_s, true}, {u"availability"_s, u"missing"_s}}}) {
        const CardFace dimmed(faceWith(changes));
        EXPECT_NE(dimmed.read(u"cardSurface"_s, "color"), open.read(u"cardSurface"_s, "color"));
        EXPECT_NE(dimmed.read(u"cardTitle"_s, "color"), open.read(u"cardTitle"_s, "color"));
        EXPECT_LT(dimmed.read(u"cardShadow"_s, "opacity").toReal(), open.read(u"cardShadow"_s, "opacity").toReal());
    }
}

TEST(CardFaceView, BorderMarksTheRunningTimerAndTheSelection)
{
    const CardFace idle(faceWith());
    const CardFace running(faceWith(), {{u"isTimerRunning"_s, true}});
    const CardFace selected(faceWith(), {{u"isSelected"_s, true}});
    EXPECT_NE(running.borderColor(u"cardBorder"_s), idle.borderColor(u"cardBorder"_s));
    EXPECT_EQ(idle.borderColor(u"selectionBorder"_s).alpha(), 0);
    EXPECT_GT(selected.borderColor(u"selectionBorder"_s).alpha(), 0);
}

} // namespace
