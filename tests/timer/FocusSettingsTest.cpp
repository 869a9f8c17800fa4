#include "FocusSettings.h"

#include "SettingsFiles.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>

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
    } cases[] = {
        {"", 1500, true},
        {"focusTargetSeconds=2700\nshowsCardNameInFocusPanel=false", 2700, false},
        {"focusTargetSeconds=30", 60, true},
        {"focusTargetSeconds=-5", 60, true},
        {"focusTargetSeconds=100000", 14400, true},
        {"focusTargetSeconds=9000000000", 14400, true},
        {"focusTargetSeconds=twenty", 1500, true},
        {"focusTargetSeconds=1500.5", 1500, true},
        {"focusTargetSeconds=900, 1800", 1500, true},
        {"focusTargetSeconds=", 1500, true},
        {"focusTargetSeconds=true", 1500, true},
        {"showsCardNameInFocusPanel=FALSE", 1500, false},
        {"showsCardNameInFocusPanel=0", 1500, true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.lines.constData());
        FocusSettings settings(storeWithFile(c.lines));
        EXPECT_EQ(settings.targetSeconds(), c.targetSeconds);
        EXPECT_EQ(settings.showsCardNameInFocusPanel(), c.showsCardName);
    }
}

// A setter stores even an unchanged value, but notifies only a change.
TEST_F(FocusSettingsTest, SettersClampStoreAlwaysAndNotifyOnChange)
{
    const struct {
        QByteArray lines;
        int setTarget;
        bool setFlag;
        int target;
        int notifications;
    } cases[] = {
        {"", 59, true, 60, 1},
        {"", 14401, false, 14400, 2},
        {"", 1500, true, 1500, 0},
        {"focusTargetSeconds=30\nshowsCardNameInFocusPanel=false", 60, false, 60, 0},
        {"focusTargetSeconds=100000", 100000, true, 14400, 0},
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
        const FocusSettings reloaded(store());
        EXPECT_EQ(reloaded.targetSeconds(), c.target);
        EXPECT_EQ(reloaded.showsCardNameInFocusPanel(), c.setFlag);
    }
}

TEST_F(FocusSettingsTest, SelectableTargetsKeepAnUnofferedValueInOrder)
{
    const QList<int> choices{900, 1500, 1800, 2700, 3000, 3600, 5400};
    const struct {
        int target;
        QList<int> selectable;
    } cases[] = {
        {1500, choices},
        {1200, {900, 1200, 1500, 1800, 2700, 3000, 3600, 5400}},
        {60, {60, 900, 1500, 1800, 2700, 3000, 3600, 5400}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.target);
        FocusSettings settings(storeWithFile("focusTargetSeconds=" + QByteArray::number(c.target)));
        EXPECT_EQ(settings.selectableTargets(), c.selectable);
    }
}

} // namespace
