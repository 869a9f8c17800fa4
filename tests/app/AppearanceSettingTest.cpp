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

const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
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
        EXPECT_TRUE(m_connection.registerService(u"org.freedesktop.portal.Desktop"_s));
    }

    ~FakePortal() override
    {
        m_connection.unregisterService(u"org.freedesktop.portal.Desktop"_s);
        QDBusConnection::disconnectFromBus(m_connection.name());
    }

    [[nodiscard]] int reads() const { return m_reads; }

    void announce(const QString &group, const QString &key, const QVariant &value)
    {
        QDBusMessage signal =
            QDBusMessage::createSignal(portalPath, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
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
        EXPECT_EQ(group, appearanceGroup);
        EXPECT_EQ(key, colorSchemeKey);
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

// Long enough for an answer on the private bus that must not change anything.
void letTheBusSettle()
{
    QTest::qWait(150);
}

TEST(DesktopColorSchemeTest, DecodesEveryShapeOfValue)
{
    const struct { const char *name; QVariant value; bool dark; } cases[] = {
        {"dark, as a signed number", wrapped(1), true},
        {"light", wrapped(wrapped(light)), false},
        {"dark as text", wrapped(u"1"_s), false},
        {"dark as a fraction", wrapped(1.0), false},
        {"nothing", wrapped(QVariant()), false},
    };
    for (const auto &item : cases) {
        SCOPED_TRACE(item.name);
        EXPECT_EQ(DesktopColorScheme::meansDark(item.value), item.dark);
    }
}

// The desktop's first answer, then its changes of the colour scheme alone, reach the settings that
// follow it; a fixed choice holds whatever the desktop does.
TEST(DesktopColorSchemeTest, TakesTheFirstAnswerThenFollowsChangesOfTheColourSchemeOnly)
{
    FakePortal portal(dark);
    DesktopColorScheme desktop;
    SettingsFiles files;
    const AppearanceSetting followsSystem(files.storeWithFile("appearancePreference=system"), &desktop);
    const AppearanceSetting fixedLight(files.storeWithFile("appearancePreference=light"), &desktop);
    const AppearanceSetting fixedDark(files.storeWithFile("appearancePreference=dark"), &desktop);
    QSignalSpy changes(&desktop, &DesktopColorScheme::prefersDarkChanged);
    QSignalSpy flips(&followsSystem, &AppearanceSetting::isDarkChanged);
    const auto expectDesktop = [&](bool prefersDark) {
        EXPECT_EQ(desktop.prefersDark(), prefersDark);
        EXPECT_EQ(followsSystem.isDark(), prefersDark);
        EXPECT_FALSE(fixedLight.isDark());
        EXPECT_TRUE(fixedDark.isDark());
    };
    expectDesktop(false); // nothing has been answered yet
    ASSERT_TRUE(changes.wait(5000));
    expectDesktop(true);

    // Another setting's change, even one whose value would mean light, says nothing of the scheme.
    portal.announce(appearanceGroup, u"accent-color"_s, light);
    portal.announce(u"org.gnome.desktop.interface"_s, colorSchemeKey, light);
    // Were either taken, the dark that follows would notify again and the counts below would be off.
    portal.announce(dark);
    portal.announce(light);
    ASSERT_TRUE(changes.wait(5000));
    expectDesktop(false);

    // The same meaning once more notifies nobody.
    portal.announce(noPreference);
    letTheBusSettle();
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(flips.count(), 2);
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
    // A connection that never reached a bus: the desktop stays light.
    DesktopColorScheme m_lightDesktop{QDBusConnection(u"no-bus"_s)};
};

TEST_F(AppearanceSettingTest, ReadsTheStoredWordAndTakesAnythingElseAsSystem)
{
    const struct { QByteArray lines; AppearancePreference preference; } cases[] = {
        {"", AppearancePreference::system},
        {"appearancePreference=light", AppearancePreference::light},
        {"appearancePreference=\"dark\"", AppearancePreference::dark},
        {"appearancePreference=Dark", AppearancePreference::system},
        {"appearancePreference=dark, light", AppearancePreference::system},
        {"appearancePreference=@Invalid()", AppearancePreference::system},
    };
    for (const auto &item : cases) {
        SCOPED_TRACE(item.lines.constData());
        const AppearanceSetting setting(storeWithFile(item.lines), &m_lightDesktop);
        EXPECT_EQ(setting.preference(), item.preference);
        EXPECT_EQ(setting.isDark(), item.preference == AppearancePreference::dark);
    }
}

TEST_F(AppearanceSettingTest, SettingAlwaysWritesTheWordAndNotifiesOnlyForANewValue)
{
    // Each step starts from the one before, on one setting whose stored word was damaged.
    const struct { AppearancePreference set; int preferenceChanges, isDarkChanges; } steps[] = {
        {AppearancePreference::system, 0, 0},
        {AppearancePreference::light, 1, 0}, // the light desktop was light already
        {AppearancePreference::dark, 2, 1},
        {AppearancePreference::dark, 2, 1},
    };
    AppearanceSetting setting(storeWithFile("appearancePreference=night"), &m_lightDesktop);
    QSignalSpy preferenceChanges(&setting, &AppearanceSetting::preferenceChanged);
    QSignalSpy isDarkChanges(&setting, &AppearanceSetting::isDarkChanged);
    for (const auto &step : steps) {
        SCOPED_TRACE(rawValue(step.set).toStdString());
        store()->setValue(u"appearancePreference"_s, u"night"_s);
        setting.setPreference(step.set);
        EXPECT_EQ(store()->value(u"appearancePreference"_s), rawValue(step.set));
        EXPECT_EQ(preferenceChanges.count(), step.preferenceChanges);
        EXPECT_EQ(isDarkChanges.count(), step.isDarkChanges);
    }
    // The settings screen writes words; one that is not a preference is ignored.
    setting.setProperty("preference", u"Dark"_s);
    setting.setProperty("preference", u"light"_s);
    EXPECT_EQ(setting.preference(), AppearancePreference::light);
    EXPECT_EQ(preferenceChanges.count(), 3);
}

} // namespace

#include "AppearanceSettingTest.moc"
