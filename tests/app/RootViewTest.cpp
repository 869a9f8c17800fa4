#include "AppModel.h"
#include "AppearanceSetting.h"
#include "Await.h"
#include "DesktopColorScheme.h"
#include "PlatformText.h"

#include <QFile>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// The main window loaded as the application loads it, over a model whose container is private.
class RootViewTest : public ::testing::Test {
protected:
    // The model is the fixture's, so that it outlives the window that reads it.
    void load()
    {
        m_model = std::make_unique<AppModel>(
            sources(), std::make_shared<QSettings>(m_dir.filePath(u"defaults.ini"_s), QSettings::IniFormat));
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        m_engine.setInitialProperties(
            {{u"app"_s, QVariant::fromValue(m_model.get())}, {u"appearance"_s, QVariant::fromValue(&m_appearance)}});
        m_engine.load(QUrl(u"qrc:/qt/qml/Velto/app/Main.qml"_s));
        ASSERT_EQ(m_engine.rootObjects().size(), 1);
        m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().first());
        ASSERT_NE(m_window, nullptr);
    }

    QQuickItem *find(const QString &name) const { return m_window->findChild<QQuickItem *>(name); }

    bool waitFor(const QString &name) const
    {
        return QTest::qWaitFor([&] { return find(name) != nullptr; }, 5000);
    }

    AppGroupSources sources() const
    {
        QProcessEnvironment environment;
        environment.insert(u"XDG_DATA_HOME"_s, m_dataHome);
        return {u"io.quillmere.Velto"_s, environment, m_dir.path()};
    }

    QTemporaryDir m_dir;
    QString m_dataHome = m_dir.path();
    // A connection that never reached a bus: the desktop stays light.
    DesktopColorScheme m_desktop{QDBusConnection(u"no-bus"_s)};
    AppearanceSetting m_appearance{
        std::make_shared<QSettings>(m_dir.filePath(u"appearance.ini"_s), QSettings::IniFormat), &m_desktop};
    std::unique_ptr<AppModel> m_model;
    QQmlApplicationEngine m_engine;
    QQuickWindow *m_window = nullptr;
};

TEST_F(RootViewTest, FailureShowsTheMessageAndTryAgainRecovers)
{
    QFile blocker(m_dir.filePath(u"io.quillmere.Velto"_s));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();

    load();
    ASSERT_TRUE(waitFor(u"startupFailureView"_s));
    EXPECT_EQ(find(u"startupFailureMessage"_s)->property("text").toString(), m_model->failureMessage());
    EXPECT_FALSE(m_model->failureMessage().isEmpty());

    ASSERT_TRUE(blocker.remove());
    QQuickItem *button = find(u"tryAgainButton"_s);
    ASSERT_NE(button, nullptr);
    QMetaObject::invokeMethod(button, "clicked");
    EXPECT_TRUE(waitFor(u"boardPlace"_s));
}

TEST_F(RootViewTest, AppearingStartsVeltoAndTheWindowFollowsTheAppearance)
{
    load();
    EXPECT_TRUE(waitFor(u"boardPlace"_s));
    EXPECT_EQ(m_model->startupKind(), AppModel::StartupKind::Ready);
    const QColor light = m_window->color();
    m_appearance.setPreference(AppearancePreference::dark);
    EXPECT_NE(m_window->color(), light);
    m_appearance.setPreference(AppearancePreference::system); // the desktop here is light
    EXPECT_EQ(m_window->color(), light);
}

} // namespace

// Where saved data would not last, the gate stands alone in the window; start-up still runs
// behind it, so the other windows and the tray work as usual.
TEST_F(RootViewTest, TheGateStandsInPlaceOfTheBoardWhileStartUpGoesOn)
{
    m_dataHome = m_dir.filePath(u"AppTranslocation/1234/data"_s);
    load();
    ASSERT_TRUE(waitFor(u"installLocationGate"_s));
    EXPECT_EQ(find(u"gateTitle"_s)->property("text").toString(), PlatformText::translocatedTitle());
    EXPECT_NE(find(u"gateQuitButton"_s), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_model->startupKind() == AppModel::StartupKind::Ready; }, 5000));
    EXPECT_EQ(find(u"boardPlace"_s), nullptr);
}
