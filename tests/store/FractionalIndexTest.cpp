#include "FractionalIndex.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <variant>

using namespace Qt::StringLiterals;

namespace {

// The order given for the position, or the text of the failure: the text shows both which
// failure it is and how its numbers are written.
TEST(FractionalIndex, OrderForPosition)
{
    const double largestBelowTwo = std::nextafter(2.0, 0.0);
    const double largest = std::numeric_limits<double>::max();
    const double tiny = std::numeric_limits<double>::denorm_min();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char *name;
        QList<double> orders;
        qint64 position;
        std::variant<double, const char *> outcome;
    } cases[] = {
        {"empty list", {}, 3, 0.0},
        {"before the top", {5.0}, -3, 4.0},
        {"past the bottom", {5.0}, 7, 6.0},
        {"the ends never check order", {3.0, 3.0}, 0, 2.0},
        {"the largest floats do not overflow", {largest / 2, largest}, 1, largest * 0.75},
        {"equal neighbours", {3.0, 3.0}, 1, "sort orders are not ascending: 3.0 then 3.0"},
        {"reversed neighbours", {0.1, -0.0}, 1, "sort orders are not ascending: 0.1 then -0.0"},
        {"large and small magnitudes", {1e16, 1e-5}, 1, "sort orders are not ascending: 1e+16 then 1e-05"},
        {"a NaN neighbour", {notANumber, 1.0}, 1, "sort orders are not ascending: nan then 1.0"},
        {"adjacent floats", {largestBelowTwo, 2.0}, 1,
         "no value fits between 1.9999999999999998 and 2.0; the column needs renumbering"},
        {"adjacent floats around zero", {-tiny, 0.0}, 1,
         "no value fits between -5e-324 and 0.0; the column needs renumbering"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        try {
            const double order = FractionalIndex::orderForPosition(c.orders, c.position);
            ASSERT_TRUE(std::holds_alternative<double>(c.outcome)) << "gave " << order;
            EXPECT_EQ(order, std::get<double>(c.outcome));
        } catch (const FractionalIndex::Failure &failure) {
            ASSERT_TRUE(std::holds_alternative<const char *>(c.outcome)) << failure.what();
            EXPECT_STREQ(failure.what(), std::get<const char *>(c.outcome));
        }
    }
}

} // namespace
