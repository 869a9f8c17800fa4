#include "FocusSettings.h"

#include "SettingsFiles.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// Every case gets a settings file of its own.
class FocusSettingsTest : public ::testing::Test, protected SettingsFiles {};

TEST_F(FocusSettingsTest, LoadsStoredValuesClampedAndGarbageAsDefaults)
{
    const struct {
        QByteArray lines;
        int targetSeconds;
        bool showsCardName;
        QList<int> selectable; // empty: the offered choices alone
    } cases[] = {
        {"", 1500, true, {}},
        {"focusTargetSeconds=1200\nshowsCardNameInFocusPanel=FALSE", 1200, false,
         {900, 1200, 1500, 1800, 2700, 3000, 3600, 5400}},
        {"focusTargetSeconds=-5", 60, true, {60, 900, 1500, 1800, 2700, 3000, 3600, 5400}},
        {"focusTargetSeconds=9000000000", 14400, true, {900, 1500, 1800, 2700, 3000, 3600, 5400, 14400}},
        {"focusTargetSeconds=1500.5", 1500, true, {}},
        {"focusTargetSeconds=900, 1800\nshowsCardNameInFocusPanel=0", 1500, true, {}},
    };
    const QList<int> choices{900, 1500, 1800, 2700, 3000, 3600, 5400};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.lines.constData());
        const FocusSettings settings(storeWithFile(c.lines));
        EXPECT_EQ(settings.targetSeconds(), c.targetSeconds);
        EXPECT_EQ(settings.showsCardNameInFocusPanel(), c.showsCardName);
        EXPECT_EQ(settings.selectableTargets(), c.selectable.isEmpty() ? choices : c.selectable);
    }
}

// A setter stores even an unchanged value, so a damaged file is repaired, but notifies only a change.
TEST_F(FocusSettingsTest, SettersClampStoreAlwaysAndNotifyOnChange)
{
    const struct { QByteArray lines; int setTarget; bool setFlag; int target, notifications; } cases[] = {
        {"", 14401, false, 14400, 2},
        {"", 1500, true, 1500, 0},
        {"focusTargetSeconds=30\nshowsCardNameInFocusPanel=false", 59, false, 60, 0},
        {"showsCardNameInFocusPanel=junk", -1, true, 60, 1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << c.lines.constData() << ", set " << c.setTarget << ", " << c.setFlag);
        const auto defaults = storeWithFile(c.lines);
        FocusSettings settings(defaults);
        QSignalSpy targetChanged(&settings, &FocusSettings::targetSecondsChanged);
        QSignalSpy flagChanged(&settings, &FocusSettings::showsCardNameInFocusPanelChanged);
        settings.setTargetSeconds(c.setTarget);
        settings.setShowsCardNameInFocusPanel(c.setFlag);
        EXPECT_EQ(settings.targetSeconds(), c.target);
        EXPECT_EQ(targetChanged.count() + flagChanged.count(), c.notifications);

        defaults->sync();
        EXPECT_EQ(store()->value(u"focusTargetSeconds"_s).toString(), QString::number(c.target));
        EXPECT_EQ(store()->value(u"showsCardNameInFocusPanel"_s).toString(), c.setFlag ? u"true"_s : u"false"_s);
    }
}

} // namespace
