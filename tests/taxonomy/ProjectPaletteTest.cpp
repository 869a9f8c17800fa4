#include "ProjectPalette.h"

#include <gtest/gtest.h>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

// A stored colour is matched to its slot case-blind for drawing, but only exactly for dealing, so a
// colour the user typed is never replaced; the dealing wraps from Red to Blue.
TEST(ProjectPalette, DrawsAndDealsOnlyFromItsLightValues)
{
    const struct {
        QString stored;
        QString dark;
        QString dealtAfter;
    } cases[] = {
        {u"#2A78D6"_s, u"#3987E5"_s, u"#EB6834"_s},
        {u"#2a78d6"_s, u"#3987E5"_s, u"#2a78d6"_s},
        {u"#E34948"_s, u"#E66767"_s, u"#2A78D6"_s},
        {u"#3987E5"_s, u"#3987E5"_s, u"#3987E5"_s}, // a dark partner is no light value
        {ProjectPalette::neutral(), ProjectPalette::neutral(), ProjectPalette::neutral()},
        {u""_s, u""_s, u""_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.stored.toStdString());
        EXPECT_EQ(ProjectPalette::darkVariant(c.stored), c.dark);
        EXPECT_EQ(ProjectPalette::colorDealtAfter(c.stored), c.dealtAfter);
    }
}

TEST(ColorFromHex, ReadsSixHexDigitsAndNothingElse)
{
    const struct {
        QString text;
        std::optional<QColor> color;
    } cases[] = {
        {u"#2A78D6"_s, QColor(0x2A, 0x78, 0xD6)},
        {u"2a78d6"_s, QColor(0x2A, 0x78, 0xD6)},
        {u""_s, std::nullopt},
        {u"#12345"_s, std::nullopt},
        {u"#1234567"_s, std::nullopt},
        {u"##123456"_s, std::nullopt},
        {u"#12345G"_s, std::nullopt},
        // Forms a number parser would take.
        {u"0x1234"_s, std::nullopt},
        {u"+12345"_s, std::nullopt},
        {u"#\uFF11\uFF12\uFF13\uFF14\uFF15\uFF16"_s, std::nullopt},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text.toStdString());
        EXPECT_EQ(colorFromHex(c.text), c.color);
    }
}

} // namespace
