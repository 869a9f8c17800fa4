#include "ElapsedFormat.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

TEST(ElapsedFormat, WritesMinutesBelowAnHourAndHoursFromThere)
{
    const struct {
        double seconds;
        QString text;
    } cases[] = {
        {0, u"0:00"_s},
        {-5, u"0:00"_s},
        {0.4, u"0:00"_s},
        {0.5, u"0:01"_s},
        {42, u"0:42"_s},
        {59.5, u"1:00"_s},
        {309, u"5:09"_s},
        {1500, u"25:00"_s},
        {3599, u"59:59"_s},
        {3599.5, u"1:00:00"_s},
        {3600, u"1:00:00"_s},
        {3723, u"1:02:03"_s},
        {3909, u"1:05:09"_s},
        {86400, u"24:00:00"_s},
        {360000, u"100:00:00"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.seconds);
        EXPECT_EQ(ElapsedFormat::text(c.seconds), c.text);
    }
}

TEST(ElapsedFormatDeathTest, StopsOnADurationThatIsNoNumber)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(ElapsedFormat::text(std::numeric_limits<double>::quiet_NaN()), "");
    EXPECT_DEATH(ElapsedFormat::text(std::numeric_limits<double>::infinity()), "");
}

} // namespace
