#include "ProjectPalette.h"

#include <gtest/gtest.h>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

TEST(ProjectPalette, SlotsComeInDealingOrderWithTheirDarkPartners)
{
    const QList<ProjectPalette::Slot> expected{
        {u"Blue"_s, u"#2A78D6"_s, u"#3987E5"_s},    {u"Orange"_s, u"#EB6834"_s, u"#D95926"_s},
        {u"Aqua"_s, u"#1BAF7A"_s, u"#199E70"_s},    {u"Yellow"_s, u"#EDA100"_s, u"#C98500"_s},
        {u"Magenta"_s, u"#E87BA4"_s, u"#D55181"_s}, {u"Green"_s, u"#008300"_s, u"#008300"_s},
        {u"Violet"_s, u"#4A3AA7"_s, u"#9085E9"_s},  {u"Red"_s, u"#E34948"_s, u"#E66767"_s},
    };
    ASSERT_EQ(ProjectPalette::orderedSlots(), expected);
    for (const auto &slot : expected) {
        SCOPED_TRACE(slot.name.toStdString());
        EXPECT_EQ(ProjectPalette::darkVariant(slot.light), slot.dark);
        EXPECT_EQ(ProjectPalette::darkVariant(slot.light.toLower()), slot.dark);
    }
}

TEST(ProjectPalette, AColourOutsideThePaletteStaysAsGiven)
{
    const QStringList outside{ProjectPalette::neutral(), u"#123abc"_s, u"2A78D6"_s, u"#3987E5"_s, u""_s};
    for (const QString &stored : outside) {
        SCOPED_TRACE(stored.toStdString());
        EXPECT_EQ(ProjectPalette::darkVariant(stored), stored);
    }
}

TEST(ProjectPalette, DealsTheNextSlotAfterAnExactLightValue)
{
    const struct {
        QString made;
        QString next;
    } cases[] = {
        {u"#2A78D6"_s, u"#EB6834"_s}, // Blue, then Orange
        {u"#4A3AA7"_s, u"#E34948"_s}, // Violet, then Red
        {u"#E34948"_s, u"#2A78D6"_s}, // after Red comes Blue
        {u"#2a78d6"_s, u"#2a78d6"_s}, // not exactly a light value: kept
        {u"#3987E5"_s, u"#3987E5"_s}, // a dark partner is no light value
        {u"#123456"_s, u"#123456"_s},
        {u""_s, u""_s},
    };
    for (const auto &[made, next] : cases) {
        SCOPED_TRACE(made.toStdString());
        EXPECT_EQ(ProjectPalette::colorDealtAfter(made), next);
    }
}

TEST(ProjectPalette, EightDealsInARowComeBackToTheStart)
{
    QString color = ProjectPalette::orderedSlots().first().light;
    QStringList dealt;
    for (int deal = 0; deal < 8; ++deal) {
        dealt.append(color);
        color = ProjectPalette::colorDealtAfter(color);
    }
    EXPECT_EQ(color, ProjectPalette::orderedSlots().first().light);
    dealt.removeDuplicates();
    EXPECT_EQ(dealt.size(), 8) << "every slot is dealt once in a round";
}

struct HexCase {
    QString text;
    std::optional<QColor> color;
};

TEST(ColorFromHex, ReadsSixHexDigitsAndNothingElse)
{
    const QList<HexCase> cases{
        {u"#2A78D6"_s, QColor(0x2A, 0x78, 0xD6)},
        {u"2a78d6"_s, QColor(0x2A, 0x78, 0xD6)},
        {u"#FFffFF"_s, QColor(255, 255, 255)},
        {u""_s, std::nullopt},
        {u"#"_s, std::nullopt},
        {u"#12345"_s, std::nullopt},
        {u"#1234567"_s, std::nullopt},
        {u"##123456"_s, std::nullopt},
        {u"#12345G"_s, std::nullopt},
        {u"0x1234"_s, std::nullopt},
        {u"+12345"_s, std::nullopt},
        {u"#\uFF11\uFF12\uFF13\uFF14\uFF15\uFF16"_s, std::nullopt},
    };
    for (const auto &[text, color] : cases) {
        SCOPED_TRACE(text.toStdString());
        const auto parsed = colorFromHex(text);
        EXPECT_EQ(parsed, color);
        if (parsed) {
            EXPECT_EQ(parsed->alphaF(), 1.0f);
        }
    }
}

} // namespace
