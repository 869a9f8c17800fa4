#include "ElapsedFormat.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(ElapsedFormat, WritesMinutesBelowAnHourAndHoursFromThere)
{
    const struct {
        double seconds;
        QString text;
    } cases[] = {
        {-5, u"0:00"_s},       {0.4, u"0:00"_s},         {0.5, u"0:01"_s},         {309, u"5:09"_s},
        {3599, u"59:59"_s},    {3599.5, u"1:00:00"_s},   {3909, u"1:05:09"_s},     {360000, u"100:00:00"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.seconds);
        EXPECT_EQ(ElapsedFormat::text(c.seconds), c.text);
    }
}

} // namespace
