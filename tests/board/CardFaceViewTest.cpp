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

// One card face in an engine of its own, its parts found by name. The face is the board's for an
// available card in progress, without deadline, project, tags or checklist, changed by `changes`.
class CardFace {
public:
    explicit CardFace(const QVariantMap &changes = {}, const QVariantMap &properties = {})
    {
        QVariantMap face{{u"title"_s, u"Thesis"_s},
                         {u"displayName"_s, u"Thesis"_s},
                         {u"displayPath"_s, QDir::homePath() + u"/Projects/Writing/Thesis"_s},
                         {u"status"_s, 1},
                         {u"priority"_s, 4},
                         {u"availability"_s, u"available"_s}};
        face.insert(changes);
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        QQmlComponent component(&m_engine);
        component.setData("import Velto\nCardFaceView { width: 280 }", QUrl());
        QVariantMap initial = properties;
        initial.insert(u"face"_s, face);
        m_card.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(initial)));
        if (!m_card)
            ADD_FAILURE() << component.errorString().toStdString();
    }

    [[nodiscard]] QQuickItem *card() const { return m_card.get(); }

    // Puts the card in a window of its own, below a strip of empty space, so that it is laid out
    // and takes the pointer.
    bool showInWindow()
    {
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(400, 400);
        m_card->setParentItem(m_window->contentItem());
        m_card->setY(emptyStrip);
        m_window->show();
        return QTest::qWaitForWindowExposed(m_window.get());
    }

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

    [[nodiscard]] QColor borderColor(const QString &name) const
    {
        const QObject *border = read(name, "border").value<QObject *>();
        return border ? border->property("color").value<QColor>() : QColor();
    }

    std::unique_ptr<QQuickWindow> m_window;

private:
    QQmlEngine m_engine;
    std::unique_ptr<QQuickItem> m_card;
};

TEST(CardFaceView, RepairChipSaysWhatIsWrongWithTheFolder)
{
    const QString locate = u" Choose Locate… to pick it again and restore access."_s;
    const struct {
        const char *name;
        QVariantMap changes;
        QString label; // empty: no chip
        QString help;
    } cases[] = {
        {"an available folder needs nothing", {}, {}, {}},
        {"a missing card", {{u"isMissing"_s, true}}, u"Folder missing"_s, u"The folder could not be found."_s},
        {"missing outranks unreachable, and says why when it is known",
         {{u"isMissing"_s, true}, {u"availability"_s, u"unreachable"_s}, {u"failure"_s, u"In the Trash."_s}},
         u"Folder missing"_s, u"In the Trash."_s},
        {"an unreachable folder", {{u"availability"_s, u"unreachable"_s}}, u"No access"_s,
         u"Velto cannot read this folder right now."_s + locate},
        {"an unreachable folder says why, then what helps",
         {{u"availability"_s, u"unreachable"_s}, {u"failure"_s, u"Permission denied."_s}}, u"No access"_s,
         u"Permission denied."_s + locate},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const CardFace face(c.changes);
        ASSERT_EQ(face.shows(u"repairChip"_s), !c.label.isEmpty());
        EXPECT_EQ(face.read(u"repairChipLabel"_s, "text").toString(), c.label);
        EXPECT_EQ(face.read(u"repairChip"_s, "help").toString(), c.help);
    }
}

TEST(CardFaceView, PriorityMarkFollowsTheTitleExceptForLater)
{
    const struct { int priority; bool shown, pill; } cases[] = {{0, true, true}, {2, true, false}, {4, false, false}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.priority);
        const CardFace face({{u"priority"_s, c.priority}});
        ASSERT_EQ(face.shows(u"priorityMark"_s), c.shown);
        if (!c.shown)
            continue;
        EXPECT_EQ(face.shows(u"priorityPill"_s), c.pill);
        EXPECT_EQ(face.shows(u"prioritySymbol"_s), !c.pill);
        EXPECT_GT(face.part(u"priorityMark"_s)->x(), face.part(u"cardTitle"_s)->x());
    }
}

TEST(CardFaceView, ProgressRowCountsTheChecklistOnlyWhenItHasItems)
{
    const struct { int done, total; QString count; double filled; } cases[] = {
        {0, 0, {}, 0}, {2, 5, u"2/5"_s, 0.4}, {5, 5, u"5/5"_s, 1}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.count.toStdString());
        const CardFace face({{u"progressDone"_s, c.done}, {u"progressTotal"_s, c.total}});
        ASSERT_EQ(face.shows(u"progressRow"_s), c.total > 0);
        if (c.total == 0)
            continue;
        EXPECT_EQ(face.read(u"progressCount"_s, "text").toString(), c.count);
        const qreal track = face.part(u"progressTrack"_s)->width();
        ASSERT_GT(track, 0);
        EXPECT_NEAR(face.part(u"progressFill"_s)->width() / track, c.filled, 1e-9);
    }
}

TEST(CardFaceView, TheWorkingFilesTasksStandBesideTheChecklistOnlyWhenThereAreSome)
{
    const struct { const char *name; int checklist, tasks; } cases[] = {
        {"neither", 0, 0}, {"tasks alone", 0, 4}, {"both", 3, 4}, {"checklist alone", 3, 0}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const CardFace face({{u"progressDone"_s, 1}, {u"progressTotal"_s, c.checklist},
                             {u"workingDone"_s, 2}, {u"workingTotal"_s, c.tasks}});
        ASSERT_EQ(face.shows(u"workingProgressRow"_s), c.tasks > 0);
        ASSERT_EQ(face.shows(u"progressRow"_s), c.checklist > 0);
        if (c.tasks == 0)
            continue;
        EXPECT_EQ(face.read(u"workingProgressCount"_s, "text").toString(), u"2/%1"_s.arg(c.tasks));
        EXPECT_EQ(face.read(u"workingProgressRow"_s, "helpText").toString(),
                  u"2 of %1 tasks in velto.md done"_s.arg(c.tasks));
        if (c.checklist > 0) {
            QQuickItem *checklist = face.part(u"progressRow"_s);
            QQuickItem *tasks = face.part(u"workingProgressRow"_s);
            EXPECT_EQ(checklist->y(), tasks->y());
            EXPECT_GT(tasks->x(), checklist->x() + checklist->width());
        }
    }
}

TEST(CardFaceView, PathLineTellsNameProjectAndPlaceInThatOrder)
{
    const CardFace plain;
    EXPECT_FALSE(plain.shows(u"pathName"_s));
    EXPECT_FALSE(plain.shows(u"pathProjectName"_s));
    EXPECT_EQ(plain.read(u"shortPath"_s, "text").toString(), u"Projects/Writing"_s);

    const CardFace face({{u"title"_s, u"My thesis"_s},
                         {u"hasCustomTitle"_s, true},
                         {u"projectID"_s, u"P1"_s},
                         {u"projectName"_s, u"Research"_s}});
    EXPECT_EQ(face.read(u"pathName"_s, "text").toString(), u"Thesis"_s);
    EXPECT_EQ(face.read(u"pathProjectName"_s, "text").toString(), u"Research"_s);
    qreal x = -1;
    for (const QString &part : {u"pathName"_s, u"pathProjectDot"_s, u"pathProjectName"_s, u"shortPath"_s}) {
        SCOPED_TRACE(part.toStdString());
        EXPECT_TRUE(face.shows(part));
        EXPECT_GT(face.part(part)->x(), x);
        x = face.part(part)->x();
    }
}

TEST(CardFaceView, DeadlineChipWarnsOnlyForOpenCards)
{
    const QDateTime now = QDateTime::currentDateTime();
    const struct {
        const char *name;
        QDateTime deadline;
        bool complete;
        bool alarmed; // the card's outline turns
    } cases[] = {
        {"no deadline, no chip", {}, false, false},
        {"overdue", now.addDays(-3), false, true},
        {"overdue but complete: no alarm", now.addDays(-3), true, false},
        {"near", now.addDays(1), false, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const QVariantMap completeness{{u"isComplete"_s, c.complete}, {u"status"_s, c.complete ? 3 : 1}};
        const CardFace plain(completeness);
        QVariantMap changes = completeness;
        changes.insert(u"deadline"_s, c.deadline);
        const CardFace face(changes);
        EXPECT_EQ(face.shows(u"deadlineChip"_s), c.deadline.isValid());
        EXPECT_EQ(face.borderColor(u"cardBorder"_s) != plain.borderColor(u"cardBorder"_s), c.alarmed);
    }
}

TEST(CardFaceView, TimerControlsShowWhereTheyCanActAndAskForTheToggle)
{
    const struct { bool running, canToggle; const char *button; } cases[] = {
        {false, true, "playButton"}, {true, true, "stopButton"}, {true, false, nullptr}};
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << c.running << c.canToggle);
        const CardFace face({}, {{u"isTimerRunning"_s, c.running}, {u"canToggleTimer"_s, c.canToggle},
                                 {u"elapsed"_s, 3909.2}});
        ASSERT_EQ(face.shows(u"runningSession"_s), c.running && c.canToggle);
        if (c.running && c.canToggle) {
            EXPECT_EQ(face.read(u"runningSessionText"_s, "text").toString(), u"Tracking · 1:05:09"_s);
        }
        // The play button stands aside while the row's own stop button is there.
        EXPECT_EQ(face.part(u"playButton"_s)->isVisible(), c.canToggle && !c.running);
        if (!c.button)
            continue;
        QSignalSpy toggled(face.card(), SIGNAL(toggleTimer()));
        QMetaObject::invokeMethod(face.part(QString::fromLatin1(c.button)), "clicked");
        EXPECT_EQ(toggled.count(), 1);
    }
}

TEST(CardFaceView, PlayButtonAppearsWhileThePointerIsOverTheCard)
{
    CardFace face;
    ASSERT_TRUE(face.showInWindow());
    for (const bool over : {false, true, false}) {
        QTest::mouseMove(face.m_window.get(), over ? QPoint(40, CardFace::emptyStrip + 20) : QPoint(200, 50));
        EXPECT_TRUE(QTest::qWaitFor([&] { return face.shows(u"playButton"_s) == over; })) << over;
    }
}

TEST(CardFaceView, FinishedAndMissingCardsStepBackAndTheOutlineMarksTimerAndSelection)
{
    const CardFace open;
    for (const auto &changes : {QVariantMap{{u"isComplete"_s, true}, {u"status"_s, 3}},
                                QVariantMap{{u"isMissing"_s, true}, {u"availability"_s, u"missing"_s}}}) {
        const CardFace dimmed(changes);
        EXPECT_NE(dimmed.read(u"cardSurface"_s, "color"), open.read(u"cardSurface"_s, "color"));
        EXPECT_NE(dimmed.read(u"cardTitle"_s, "color"), open.read(u"cardTitle"_s, "color"));
    }
    const CardFace timed({}, {{u"isTimerRunning"_s, true}});
    EXPECT_NE(timed.borderColor(u"cardBorder"_s), open.borderColor(u"cardBorder"_s));
    EXPECT_EQ(open.borderColor(u"selectionBorder"_s).alpha(), 0);
    EXPECT_GT(CardFace({}, {{u"isSelected"_s, true}}).borderColor(u"selectionBorder"_s).alpha(), 0);
}

} // namespace
