#include "FractionalIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <variant>

using namespace Qt::StringLiterals;

namespace {

using FractionalIndex::Failure;

const double largestBelowTwo = std::nextafter(2.0, 0.0);
const double largest = std::numeric_limits<double>::max();
const double notANumber = std::numeric_limits<double>::quiet_NaN();

struct OrderCase {
    const char *name;
    QList<double> orders;
    qint64 position;
    std::variant<double, Failure::Reason> outcome;
};

TEST(FractionalIndex, OrderForPosition)
{
    using OutOfOrder = Failure::NeighboursOutOfOrder;
    using Exhausted = Failure::Exhausted;
    const QList<OrderCase> cases{
        {"empty list", {}, 0, 0.0},
        {"empty list, negative position", {}, -5, 0.0},
        {"empty list, far position", {}, 9, 0.0},
        {"top of one", {5.0}, 0, 4.0},
        {"bottom of one", {5.0}, 1, 6.0},
        {"past the bottom", {5.0}, 7, 6.0},
        {"before the top", {5.0}, -3, 4.0},
        {"midpoint", {1.0, 2.0}, 1, 1.5},
        {"quarter", {1.0, 1.5}, 1, 1.25},
        {"negative orders", {-3.0, -1.0, 4.0}, 1, -2.0},
        {"between the later pair", {-3.0, -1.0, 4.0}, 2, 1.5},
        {"the ends never check order", {3.0, 3.0}, 0, 2.0},
        {"equal neighbours", {3.0, 3.0}, 1, OutOfOrder{3.0, 3.0}},
        {"reversed neighbours", {4.0, 2.0}, 1, OutOfOrder{4.0, 2.0}},
        {"adjacent floats", {largestBelowTwo, 2.0}, 1, Exhausted{largestBelowTwo, 2.0}},
        {"adjacent floats around zero", {-std::numeric_limits<double>::denorm_min(), 0.0}, 1,
         Exhausted{-std::numeric_limits<double>::denorm_min(), 0.0}},
        {"the largest floats do not overflow", {largest / 2, largest}, 1, largest * 0.75},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        try {
            const double order = FractionalIndex::orderForPosition(c.orders, c.position);
            ASSERT_TRUE(std::holds_alternative<double>(c.outcome)) << "gave " << order;
            EXPECT_EQ(order, std::get<double>(c.outcome));
        } catch (const Failure &failure) {
            ASSERT_TRUE(std::holds_alternative<Failure::Reason>(c.outcome)) << failure.what();
            EXPECT_EQ(failure.reason(), std::get<Failure::Reason>(c.outcome));
        }
    }
}

TEST(FractionalIndex, ANotANumberNeighbourIsOutOfOrder)
{
    for (const QList<double> &orders : {QList<double>{notANumber, 1.0}, QList<double>{1.0, notANumber}}) {
        try {
            (void)FractionalIndex::orderForPosition(orders, 1);
            ADD_FAILURE() << "no failure";
        } catch (const Failure &failure) {
            EXPECT_TRUE(std::holds_alternative<Failure::NeighboursOutOfOrder>(failure.reason()));
        }
    }
}

// Dropping into the same gap again and again halves it; between 1 and 2 that lasts 52 times.
TEST(FractionalIndex, AGapBetweenWholeNumbersLastsFiftyTwoHalvings)
{
    QList<double> orders{1.0, 2.0};
    int halvings = 0;
    try {
        for (;;) {
            orders.insert(1, FractionalIndex::orderForPosition(orders, 1));
            ++halvings;
        }
    } catch (const Failure &failure) {
        EXPECT_TRUE(std::holds_alternative<Failure::Exhausted>(failure.reason()));
    }
    EXPECT_EQ(halvings, 52);
    EXPECT_TRUE(std::is_sorted(orders.cbegin(), orders.cend()));
}

TEST(FractionalIndex, RenumberedCountsFromZero)
{
    EXPECT_EQ(FractionalIndex::renumbered(-1), QList<double>{});
    EXPECT_EQ(FractionalIndex::renumbered(0), QList<double>{});
    EXPECT_EQ(FractionalIndex::renumbered(3), (QList<double>{0.0, 1.0, 2.0}));
    // A renumbered column lets a card go to the top again, below zero.
    EXPECT_EQ(FractionalIndex::orderForPosition(FractionalIndex::renumbered(3), 0), -1.0);
}

TEST(FractionalIndex, FailureTextsWriteShortestNumbersWithAFraction)
{
    struct Case {
        Failure::Reason reason;
        const char *text;
    };
    const QList<Case> cases{
        {Failure::NeighboursOutOfOrder{3.0, 3.0}, "sort orders are not ascending: 3.0 then 3.0"},
        {Failure::NeighboursOutOfOrder{2.5, -1.0}, "sort orders are not ascending: 2.5 then -1.0"},
        {Failure::NeighboursOutOfOrder{0.1, -0.0}, "sort orders are not ascending: 0.1 then -0.0"},
        {Failure::NeighboursOutOfOrder{123456789.0, 0.0}, "sort orders are not ascending: 123456789.0 then 0.0"},
        {Failure::NeighboursOutOfOrder{1e16, 1e-5}, "sort orders are not ascending: 1e+16 then 1e-05"},
        {Failure::Exhausted{largestBelowTwo, 2.0},
         "no value fits between 1.9999999999999998 and 2.0; the column needs renumbering"},
        {Failure::Exhausted{1.0, 1.0000000000000002},
         "no value fits between 1.0 and 1.0000000000000002; the column needs renumbering"},
    };
    for (const auto &c : cases)
        EXPECT_STREQ(Failure(c.reason).what(), c.text);
}

} // namespace
