#include "AppearanceSetting.h"
#include "DesktopColorScheme.h"
#include "SettingsFiles.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString settingsInterface = u"org.freedesktop.portal.Settings"_s;
const QString appearanceGroup = u"org.freedesktop.appearance"_s;
const QString colorSchemeKey = u"color-scheme"_s;

constexpr uint noPreference = 0;
constexpr uint dark = 1;
constexpr uint light = 2;

QVariant wrapped(const QVariant &value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

// Reads and change signals of the desktop's settings, answered from its own connection on the
// private session bus, so the code under test talks to it exactly as to the desktop's.
class FakePortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit FakePortal(uint scheme, bool holdsReads = false)
        : m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"fake-portal"_s))
        , m_scheme(scheme)
        , m_holdsReads(holdsReads)
    {
        EXPECT_TRUE(m_connection.registerObject(portalPath, this, QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(m_connection.registerService(portalService));
    }

    ~FakePortal() override
    {
        m_connection.unregisterService(portalService);
        QDBusConnection::disconnectFromBus(m_connection.name());
    }

    [[nodiscard]] int reads() const { return m_reads; }

    void announce(const QString &group, const QString &key, const QVariant &value)
    {
        QDBusMessage signal = QDBusMessage::createSignal(portalPath, settingsInterface, u"SettingChanged"_s);
        signal << group << key << wrapped(value);
        EXPECT_TRUE(m_connection.send(signal));
    }
    void announce(uint scheme) { announce(appearanceGroup, colorSchemeKey, scheme); }

    void answerHeldRead()
    {
        ASSERT_TRUE(m_heldRead.has_value());
        m_connection.send(m_heldRead->createReply(wrapped(wrapped(m_scheme))));
    }

public slots:
    // As the desktop's portal does, the value comes wrapped in a second variant.
    QDBusVariant Read(const QString &group, const QString &key)
    {
        ++m_reads;
        if (group != appearanceGroup || key != colorSchemeKey) {
            sendErrorReply(u"org.freedesktop.portal.Error.NotFound"_s, u"Requested setting not found"_s);
            return {};
        }
        if (m_holdsReads) {
            setDelayedReply(true);
            m_heldRead = message();
            return {};
        }
        return QDBusVariant(wrapped(m_scheme));
    }

private:
    QDBusConnection m_connection;
    uint m_scheme;
    bool m_holdsReads;
    std::optional<QDBusMessage> m_heldRead;
    int m_reads = 0;
};

// A connection that never reached a bus.
QDBusConnection noBus()
{
    return QDBusConnection(u"no-bus"_s);
}

// Long enough for an answer on the private bus that must not change anything.
void letTheBusSettle()
{
    QTest::qWait(150);
}

TEST(DesktopColorSchemeTest, DecodesEveryShapeOfValue)
{
    const struct {
        const char *name;
        QVariant value;
        bool dark;
    } cases[] = {
        {"dark, as a change signal sends it", wrapped(dark), true},
        {"dark, as a read answers it", wrapped(wrapped(dark)), true},
        {"dark, unwrapped", QVariant(dark), true},
        {"dark, as a signed number", wrapped(1), true},
        {"no preference", wrapped(wrapped(noPreference)), false},
        {"light", wrapped(wrapped(light)), false},
        {"a scheme this system doesn't know", wrapped(3u), false},
        {"dark as text", wrapped(u"1"_s), false},
        {"dark as a flag", wrapped(true), false},
        {"dark as a fraction", wrapped(1.0), false},
        {"an empty variant", wrapped(QVariant()), false},
        {"nothing", QVariant(), false},
    };
    for (const auto &item : cases) {
        SCOPED_TRACE(item.name);
        EXPECT_EQ(DesktopColorScheme::meansDark(item.value), item.dark);
    }
}

TEST(DesktopColorSchemeTest, TakesTheFirstAnswerAndIsLightWithoutOne)
{
    const struct {
        const char *name;
        std::optional<uint> portalScheme;
        bool connected;
    } cases[] = {
        {"portal says dark", dark, true},
        {"portal has no preference", noPreference, true},
        {"portal says light", light, true},
        {"no portal", std::nullopt, true},
        {"no bus", std::nullopt, false},
    };
    for (const auto &item : cases) {
        SCOPED_TRACE(item.name);
        std::optional<FakePortal> portal;
        if (item.portalScheme)
            portal.emplace(*item.portalScheme);
        DesktopColorScheme desktop(item.connected ? QDBusConnection::sessionBus() : noBus());
        QSignalSpy changes(&desktop, &DesktopColorScheme::prefersDarkChanged);
        EXPECT_FALSE(desktop.prefersDark()); // nothing has been answered yet
        const bool expectsDark = item.portalScheme == dark;
        if (expectsDark)
            ASSERT_TRUE(changes.wait(5000));
        else
            letTheBusSettle();
        EXPECT_EQ(desktop.prefersDark(), expectsDark);
        EXPECT_EQ(changes.count(), expectsDark ? 1 : 0);
    }
}

TEST(DesktopColorSchemeTest, FollowsChangesOfTheColourSchemeOnly)
{
    FakePortal portal(noPreference);
    DesktopColorScheme desktop;
    QSignalSpy changes(&desktop, &DesktopColorScheme::prefersDarkChanged);
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal.reads() == 1; }, 5000));

    portal.announce(dark);
    ASSERT_TRUE(changes.wait(5000));
    EXPECT_TRUE(desktop.prefersDark());

    // Another setting's change, even one whose value would mean dark, says nothing of the scheme.
    portal.announce(appearanceGroup, u"accent-color"_s, light);
    portal.announce(u"org.gnome.desktop.interface"_s, colorSchemeKey, light);
    // Light again after dark: proves the two ignored signals were delivered before it.
    portal.announce(light);
    ASSERT_TRUE(changes.wait(5000));
    EXPECT_FALSE(desktop.prefersDark());
    EXPECT_EQ(changes.count(), 2);

    // The same value once more notifies nobody.
    portal.announce(noPreference);
    letTheBusSettle();
    EXPECT_EQ(changes.count(), 2);
}

TEST(DesktopColorSchemeTest, AChangeHeardBeforeTheFirstAnswerWins)
{
    FakePortal portal(light, /*holdsReads=*/true);
    DesktopColorScheme desktop;
    QSignalSpy changes(&desktop, &DesktopColorScheme::prefersDarkChanged);
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal.reads() == 1; }, 5000));

    portal.announce(dark);
    ASSERT_TRUE(changes.wait(5000));
    portal.answerHeldRead();
    letTheBusSettle();
    EXPECT_TRUE(desktop.prefersDark());
    EXPECT_EQ(changes.count(), 1);
}

// Every case gets a settings file of its own.
class AppearanceSettingTest : public ::testing::Test, protected SettingsFiles {
protected:
    [[nodiscard]] QVariant storedValue() const { return store()->value(u"appearancePreference"_s); }

    DesktopColorScheme m_lightDesktop{noBus()};
};

TEST_F(AppearanceSettingTest, ReadsTheStoredWordAndTakesAnythingElseAsSystem)
{
    const struct {
        QByteArray lines;
        AppearancePreference preference;
    } cases[] = {
        {"", AppearancePreference::system},
        {"appearancePreference=system", AppearancePreference::system},
        {"appearancePreference=light", AppearancePreference::light},
        {"appearancePreference=dark", AppearancePreference::dark},
        {"appearancePreference=\"dark\"", AppearancePreference::dark},
        {"appearancePreference=Dark", AppearancePreference::system},
        {"appearancePreference=\" dark\"", AppearancePreference::system},
        {"appearancePreference=night", AppearancePreference::system},
        {"appearancePreference=", AppearancePreference::system},
        {"appearancePreference=2", AppearancePreference::system},
        {"appearancePreference=dark, light", AppearancePreference::system},
        {"appearancePreference=@Invalid()", AppearancePreference::system},
        {"appearancepreference=dark", AppearancePreference::system},
    };
    for (const auto &item : cases) {
        SCOPED_TRACE(item.lines.constData());
        const AppearanceSetting setting(storeWithFile(item.lines), &m_lightDesktop);
        EXPECT_EQ(setting.preference(), item.preference);
        EXPECT_EQ(setting.preferenceRawValue(), rawValue(item.preference));
        EXPECT_EQ(setting.isDark(), item.preference == AppearancePreference::dark);
    }
}

TEST_F(AppearanceSettingTest, SettingAlwaysWritesTheWordAndNotifiesOnlyForANewValue)
{
    // Each step starts from the one before, on one setting.
    const struct {
        AppearancePreference set;
        int preferenceChanges;
        int isDarkChanges;
    } steps[] = {
        {AppearancePreference::system, 0, 0}, // what a damaged word was read as
        {AppearancePreference::light, 1, 0},  // the light desktop was light already
        {AppearancePreference::light, 1, 0},
        {AppearancePreference::dark, 2, 1},
        {AppearancePreference::dark, 2, 1},
        {AppearancePreference::system, 3, 2},
    };
    AppearanceSetting setting(storeWithFile("appearancePreference=night"), &m_lightDesktop);
    QSignalSpy preferenceChanges(&setting, &AppearanceSetting::preferenceChanged);
    QSignalSpy isDarkChanges(&setting, &AppearanceSetting::isDarkChanged);
    for (const auto &step : steps) {
        SCOPED_TRACE(rawValue(step.set).toStdString());
        store()->setValue(u"appearancePreference"_s, u"night"_s);
        setting.setPreference(step.set);
        EXPECT_EQ(storedValue(), rawValue(step.set));
        EXPECT_EQ(setting.preference(), step.set);
        EXPECT_EQ(setting.isDark(), step.set == AppearancePreference::dark);
        EXPECT_EQ(preferenceChanges.count(), step.preferenceChanges);
        EXPECT_EQ(isDarkChanges.count(), step.isDarkChanges);
    }
}

TEST_F(AppearanceSettingTest, TheWordFromTheSettingsScreenIsTakenOnlyWhenItIsOneOfTheThree)
{
    AppearanceSetting setting(storeWithFile("appearancePreference=light"), &m_lightDesktop);
    QSignalSpy preferenceChanges(&setting, &AppearanceSetting::preferenceChanged);

    EXPECT_TRUE(setting.setProperty("preference", u"dark"_s));
    EXPECT_EQ(setting.preference(), AppearancePreference::dark);
    EXPECT_TRUE(setting.isDark());

    for (const QString &word : {u"Dark"_s, u"night"_s, QString()}) {
        SCOPED_TRACE(word.toStdString());
        setting.setProperty("preference", word);
        EXPECT_EQ(setting.preference(), AppearancePreference::dark);
        EXPECT_EQ(storedValue(), u"dark"_s);
    }
    EXPECT_EQ(preferenceChanges.count(), 1);
}

TEST_F(AppearanceSettingTest, OnlySystemFollowsTheDesktop)
{
    const struct {
        AppearancePreference preference;
        bool darkWhileDesktopDark;
        bool darkWhileDesktopLight;
    } cases[] = {
        {AppearancePreference::system, true, false},
        {AppearancePreference::light, false, false},
        {AppearancePreference::dark, true, true},
    };
    for (const auto &item : cases) {
        SCOPED_TRACE(rawValue(item.preference).toStdString());
        FakePortal portal(light);
        DesktopColorScheme desktop;
        QSignalSpy desktopChanges(&desktop, &DesktopColorScheme::prefersDarkChanged);
        ASSERT_TRUE(QTest::qWaitFor([&] { return portal.reads() == 1; }, 5000));
        AppearanceSetting setting(storeWithFile("appearancePreference=" + rawValue(item.preference).toUtf8()),
                                  &desktop);
        QSignalSpy isDarkChanges(&setting, &AppearanceSetting::isDarkChanged);
        const int flips = item.darkWhileDesktopDark == item.darkWhileDesktopLight ? 0 : 1;

        portal.announce(dark);
        ASSERT_TRUE(desktopChanges.wait(5000));
        EXPECT_EQ(setting.isDark(), item.darkWhileDesktopDark);
        EXPECT_EQ(isDarkChanges.count(), flips);

        portal.announce(light);
        ASSERT_TRUE(desktopChanges.wait(5000));
        EXPECT_EQ(setting.isDark(), item.darkWhileDesktopLight);
        EXPECT_EQ(isDarkChanges.count(), 2 * flips);
    }
}

} // namespace

#include "AppearanceSettingTest.moc"
