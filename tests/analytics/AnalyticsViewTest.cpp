#include "AnalyticsFixture.h"
#include "AppModel.h"
#include "DiagnosticsModel.h"
#include "SceneItems.h"

#include <QColor>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// A window holding `declaration`, which may read `host.subject`, in an engine that also hands out
// the theme, so that a test can switch the appearance.
class ViewHost {
public:
    ViewHost(const QByteArray &type, const QByteArray &declaration, QObject *subject)
    {
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport Velto\nWindow {\n    id: host\n    required property " + type
                              + " subject\n    readonly property QtObject theme: Theme\n    visible: true\n"
                                "    width: 720\n    height: 1400\n"
                              + declaration + "\n}\n",
                          QUrl());
        m_window.reset(qobject_cast<QQuickWindow *>(
            component.createWithInitialProperties({{u"subject"_s, QVariant::fromValue(subject)}})));
        EXPECT_TRUE(m_window) << component.errorString().toStdString();
    }

    ~ViewHost() { setDark(false); }

    [[nodiscard]] QQuickItem *named(const QString &name) const
    {
        return m_window ? itemNamed(m_window->contentItem(), name) : nullptr;
    }
    [[nodiscard]] QList<QQuickItem *> allNamed(const QString &name) const
    {
        return m_window ? itemsNamed(m_window->contentItem(), name) : QList<QQuickItem *>();
    }
    [[nodiscard]] bool shows(const QString &name) const
    {
        QQuickItem *item = named(name);
        return item != nullptr && item->isVisible();
    }

    void setDark(bool dark)
    {
        if (m_window)
            m_window->property("theme").value<QObject *>()->setProperty("dark", dark);
    }

    void click(QQuickItem *item)
    {
        ASSERT_NE(item, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([&] { return item->isVisible() && item->width() > 0; }, 2000));
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    }

private:
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};

// The bar sets of the hours chart, as label to colour, in stacking order.
QList<std::pair<QString, QColor>> barSets(const ViewHost &host)
{
    QList<std::pair<QString, QColor>> sets;
    QQuickItem *chart = host.named(u"hoursChart"_s);
    if (chart == nullptr)
        return sets;
    // The series is no child of the chart; it is found by its id in the chart's own context.
    QObject *series = qmlContext(chart)->objectForName(u"bars"_s);
    if (series == nullptr)
        return sets;
    for (int i = 0; i < series->property("count").toInt(); ++i) {
        QObject *set = nullptr;
        QMetaObject::invokeMethod(series, "at", QReturnArgument<QObject *>("DeclarativeBarSet*", set), Q_ARG(int, i));
        if (set != nullptr)
            sets.append({set->property("label").toString(), set->property("color").value<QColor>()});
    }
    return sets;
}

using AnalyticsViewTest = AnalyticsFixture;

TEST_F(AnalyticsViewTest, WithNothingTrackedEachSectionSaysSo)
{
    ViewHost host("AnalyticsModel", "AnalyticsView { anchors.fill: parent; model: host.subject }", &model());
    ASSERT_TRUE(QTest::qWaitFor([&] { return model().weekLabels().size() == 8; }, 3000));
    EXPECT_TRUE(host.shows(u"nothingStuckText"_s));
    EXPECT_TRUE(host.shows(u"noTimeHint"_s));
    EXPECT_EQ(host.named(u"hoursChart"_s), nullptr);
    EXPECT_TRUE(host.shows(u"completionsChart"_s));
    EXPECT_TRUE(host.shows(u"nothingTrackedText"_s));
    EXPECT_FALSE(host.shows(u"analyticsErrorBanner"_s));
}

TEST_F(AnalyticsViewTest, TheChartStacksEachSeriesInItsColourAndFollowsTheAppearance)
{
    const QString blue = project(u"Thesis"_s, u"#2A78D6"_s);
    tracked(card(u"Atlas"_s, blue), 3);
    tracked(card(u"Beacon"_s), 1);
    // The view loads at the real present, so these waits are counted from it.
    const auto waited = [](double days) { return VeltoDate(VeltoDate::now().secondsSinceReferenceDate() - days * day - 60); };
    card(u"Waiting"_s, std::nullopt, CardStatus::waiting, waited(29));
    card(u"Forgotten"_s, std::nullopt, CardStatus::waiting, waited(30));
    ViewHost host("AnalyticsModel", "AnalyticsView { anchors.fill: parent; model: host.subject }", &model());
    ASSERT_TRUE(QTest::qWaitFor([&] { return barSets(host).size() == 2; }, 3000));

    const QList<std::pair<QString, QColor>> light{{u"Thesis"_s, QColor(0x2A, 0x78, 0xD6)},
                                                  {u"No Project"_s, QColor(0x8E, 0x8E, 0x93)}};
    EXPECT_EQ(barSets(host), light);
    const auto dots = host.allNamed(u"projectTotalDot"_s);
    ASSERT_EQ(dots.size(), 2);
    EXPECT_EQ(dots.first()->property("resolvedColor").value<QColor>(), QColor(0x2A, 0x78, 0xD6));

    // A switch of appearance recolours the open chart and the dots without a reload.
    host.setDark(true);
    EXPECT_EQ(barSets(host).first().second, QColor(0x39, 0x87, 0xE5));
    EXPECT_EQ(dots.first()->property("resolvedColor").value<QColor>(), QColor(0x39, 0x87, 0xE5));

    // From thirty days on, the days stand out.
    const auto days = host.allNamed(u"stuckDays"_s);
    ASSERT_EQ(days.size(), 2);
    EXPECT_EQ(days[0]->property("text").toString(), u"30 days"_s);
    EXPECT_EQ(days[1]->property("text").toString(), u"29 days"_s);
    EXPECT_NE(days[0]->property("color"), days[1]->property("color"));
}

TEST_F(AnalyticsViewTest, AFailedLoadShowsTheBannerAboveTheLastFigures)
{
    tracked(card(u"Atlas"_s, project(u"Thesis"_s)), 3);
    ViewHost host("AnalyticsModel", "AnalyticsView { anchors.fill: parent; model: host.subject }", &model());
    ASSERT_TRUE(QTest::qWaitFor([&] { return host.allNamed(u"projectTotalRow"_s).size() == 1; }, 3000));

    execute(u"DROP TABLE projects"_s);
    model().requestReload();
    ASSERT_TRUE(QTest::qWaitFor([&] { return host.shows(u"analyticsErrorBanner"_s); }, 3000));
    EXPECT_EQ(host.allNamed(u"projectTotalRow"_s).size(), 1);
    EXPECT_EQ(barSets(host).size(), 1);
    host.click(host.named(u"dismissButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !host.shows(u"analyticsErrorBanner"_s); }, 2000));
}

TEST_F(AnalyticsViewTest, PostingFromTheReportRaisesItsOwnCount)
{
    const auto notifier = freshChannel();
    DiagnosticsModel diagnostics(VeltoServices{{u"io.quillmere.Velto"_s, u"/tmp"_s, AppGroupContainer::Route::entitlement},
                                               database().shared_from_this(), notifier, {0, 8, {u"v1"_s}}});
    ViewHost host("DiagnosticsModel", "DiagnosticsView { anchors.fill: parent; model: host.subject }", &diagnostics);
    ASSERT_TRUE(QTest::qWaitFor([&] { return host.shows(u"postNotificationButton"_s); }, 3000));
    EXPECT_GE(host.allNamed(u"tableName"_s).size(), 6);

    host.click(host.named(u"postNotificationButton"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return diagnostics.notificationsReceived() == 1; }, 3000));
    QQuickItem *received = host.named(u"rowValue_Received here"_s);
    ASSERT_NE(received, nullptr);
    EXPECT_TRUE(received->property("text").toString().startsWith(u"1 (last at "_s));

    host.click(host.named(u"reloadDiagnosticsButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return host.shows(u"postNotificationButton"_s); }, 3000));
    EXPECT_EQ(diagnostics.notificationsReceived(), 1);
}

// Opened before start-up has made the models, each window waits, then shows its content by itself.
TEST(WindowContent, TheWaitingPanelGivesWayWhenTheModelAppears)
{
    for (const QByteArray &content : {QByteArray("AnalyticsWindowContent"), QByteArray("DiagnosticsWindowContent")}) {
        SCOPED_TRACE(content.toStdString());
        QTemporaryDir dir;
        QProcessEnvironment environment;
        environment.insert(u"XDG_DATA_HOME"_s, dir.path());
        AppModel app(AppGroupSources{u"io.quillmere.Velto"_s, environment, dir.filePath(u"home"_s)},
                     std::make_shared<QSettings>(dir.filePath(u"defaults.ini"_s), QSettings::IniFormat));
        ViewHost host("AppModel", content + " { anchors.fill: parent; app: host.subject }", &app);
        EXPECT_TRUE(host.shows(u"waitingPanel"_s));
        app.requestStart();
        const QString view = content.startsWith("Analytics") ? u"analyticsView"_s : u"diagnosticsView"_s;
        EXPECT_TRUE(QTest::qWaitFor([&] { return host.shows(view); }, 5000));
        EXPECT_EQ(host.named(u"waitingPanel"_s), nullptr);
    }
}

} // namespace
