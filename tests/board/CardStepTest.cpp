#include "CardStep.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using CardStep::Step;

namespace {

TEST(CardStepTest, EachStepLeadsToTheCardAUserExpects)
{
    // Four columns: a tall one, an empty one, a short one and a single card.
    const QList<QStringList> board{{u"a1"_s, u"a2"_s, u"a3"_s, u"a4"_s}, {}, {u"c1"_s, u"c2"_s}, {u"d1"_s}};
    const struct {
        const char *name;
        QString from;
        Step step;
        std::optional<QString> to;
    } cases[] = {
        {"down within the column", u"a1"_s, Step::down, u"a2"_s},
        {"up within the column", u"a3"_s, Step::up, u"a2"_s},
        {"up from the top goes nowhere", u"a1"_s, Step::up, std::nullopt},
        {"down from the bottom goes nowhere", u"a4"_s, Step::down, std::nullopt},
        {"right skips the empty column, at the same height", u"a2"_s, Step::right, u"c2"_s},
        {"right from below the next column's end takes its last", u"a4"_s, Step::right, u"c2"_s},
        {"left skips the empty column back", u"c1"_s, Step::left, u"a1"_s},
        {"left from the first column goes nowhere", u"a2"_s, Step::left, std::nullopt},
        {"right from the last column goes nowhere", u"d1"_s, Step::right, std::nullopt},
        {"home goes to the column's first", u"a3"_s, Step::first, u"a1"_s},
        {"end goes to the column's last", u"a2"_s, Step::last, u"a4"_s},
        {"home on the first card stays", u"a1"_s, Step::first, std::nullopt},
        {"a card not on the board goes nowhere", u"zz"_s, Step::down, std::nullopt},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(CardStep::after(board, c.from, c.step), c.to);
    }
}

} // namespace
