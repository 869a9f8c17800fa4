#include "Await.h"
#include "Database.h"
#include "SceneItems.h"
#include "TimeAggregation.h"
#include "TimerModel.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString secretName = u"Merger Talks Q3"_s;

// The panel over a real timer and database, as the main window holds it.
class FocusPanelTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        await(m_database->open());
        m_card.id = u"C1"_s;
        m_card.displayName = secretName;
        m_card.bookmark = "x";
        m_card.displayPath = u"/home/ann/Merger"_s;
        await(m_database->insertCard(m_card));

        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        QQmlComponent component(&m_engine);
        component.setData("import Velto\nFocusPanel {}\n", QUrl());
        ASSERT_TRUE(component.isReady()) << component.errorString().toStdString();
        m_panel.reset(qobject_cast<QQuickWindow *>(component.createWithInitialProperties(
            {{u"timer"_s, QVariant::fromValue(&m_timer)}, {u"settings"_s, QVariant::fromValue(m_focus.get())}})));
        ASSERT_NE(m_panel, nullptr) << component.errorString().toStdString();
    }

    void TearDown() override
    {
        m_panel.reset();
        QCoreApplication::processEvents();
    }

    // Every text shown in the panel, of every item that has one.
    QStringList visibleTexts() const
    {
        QStringList texts;
        collect(m_panel->contentItem(), texts);
        return texts;
    }

    static void collect(const QQuickItem *item, QStringList &texts)
    {
        if (!item->isVisible())
            return;
        const QVariant text = item->property("text");
        if (text.isValid())
            texts.append(text.toString());
        for (const QQuickItem *child : item->childItems())
            collect(child, texts);
    }

    void click(const QString &name)
    {
        QQuickItem *item = itemNamed(m_panel->contentItem(), name);
        ASSERT_NE(item, nullptr) << name.toStdString();
        ASSERT_TRUE(QTest::qWaitFor([&] { return item->isVisible() && item->width() > 0; }, 2000));
        QTest::mouseClick(m_panel.get(), Qt::LeftButton, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    }

    QTemporaryDir m_dir;
    std::shared_ptr<Database> m_database = Database::create(m_dir.filePath(u"Velto.sqlite"_s));
    std::shared_ptr<FocusSettings> m_focus = std::make_shared<FocusSettings>(
        std::make_shared<QSettings>(m_dir.filePath(u"settings.ini"_s), QSettings::IniFormat));
    TimerModel m_timer{VeltoServices{AppGroupContainer{}, m_database, DatabaseChangeNotifier{}, MigrationOutcome{}},
                       m_focus};
    Card m_card;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_panel;
};

TEST_F(FocusPanelTest, IsUpWhileASessionRunsOrWaitsForItsRating)
{
    EXPECT_FALSE(m_panel->isVisible());
    await(m_timer.start(m_card));
    EXPECT_TRUE(m_panel->isVisible());
    EXPECT_EQ(m_panel->title(), u"Focus"_s);
    EXPECT_TRUE(m_panel->flags().testFlag(Qt::WindowStaysOnTopHint));

    click(u"focusStopButton"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_timer.presentationKind() == TimerModel::PresentationKind::Rating; }, 3000));
    EXPECT_TRUE(m_panel->isVisible());
    EXPECT_TRUE(visibleTexts().contains(u"Skip"_s));

    click(u"skipRatingButton"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_panel->isVisible(); }, 3000));

    // A session stopped silently, as at a quit, takes the panel down without a rating.
    await(m_timer.start(m_card));
    EXPECT_TRUE(m_panel->isVisible());
    await(m_timer.stopSilently());
    EXPECT_FALSE(m_panel->isVisible());
}

TEST_F(FocusPanelTest, TheCardsNameShowsOnlyWhereTheSettingAllowsIt)
{
    for (const bool shows : {true, false}) {
        SCOPED_TRACE(shows ? "shown" : "hidden");
        m_focus->setShowsCardNameInFocusPanel(shows);
        await(m_timer.start(m_card));
        QTest::qWait(20);
        const QStringList texts = visibleTexts();
        EXPECT_EQ(texts.contains(secretName), shows) << texts.join(u" | "_s).toStdString();
        if (!shows) {
            // Not even hidden away in an item that doesn't show.
            for (const QObject *object : m_panel->findChildren<QObject *>())
                EXPECT_FALSE(object->property("text").toString().contains(secretName))
                    << object->objectName().toStdString();
            for (const QQuickItem *item : itemsNamed(m_panel->contentItem(), u"focusCardName"_s))
                EXPECT_EQ(item->property("text").toString(), QString());
        }
        await(m_timer.stop(false));
    }
}

TEST_F(FocusPanelTest, AChosenMoodIsStoredAndASkippedOneIsNot)
{
    const struct {
        const char *name;
        QString button;
        std::optional<Mood> stored;
    } cases[] = {
        {"chosen", u"moodButton_focused"_s, Mood::focused},
        {"skipped", u"skipRatingButton"_s, std::nullopt},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        await(m_timer.start(m_card));
        const QString id = m_timer.running()->id;
        await(m_timer.stop(true));
        ASSERT_TRUE(m_panel->isVisible());
        click(c.button);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !m_panel->isVisible(); }, 3000));
        for (const TimeSession &session : await(m_database->sessions(m_card.id))) {
            if (session.id == id) {
                EXPECT_EQ(session.mood, c.stored);
            }
        }
    }
}

TEST(MetTarget, ASessionMeetsItsOwnTargetByItsLength)
{
    const struct {
        const char *name;
        std::optional<double> length; // absent: still running
        std::optional<qint64> target;
        bool met;
    } cases[] = {
        {"exactly the target", 1500, 1500, true},
        {"a second short", 1499, 1500, false},
        {"past it", 4000, 1500, true},
        {"no target", 4000, std::nullopt, false},
        {"still running", std::nullopt, 60, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        TimeSession session;
        session.startedAt = VeltoDate(700000000);
        if (c.length)
            session.endedAt = VeltoDate(700000000 + *c.length);
        session.targetSeconds = c.target;
        EXPECT_EQ(TimeAggregation::metTarget(session), c.met);
    }
}

} // namespace
