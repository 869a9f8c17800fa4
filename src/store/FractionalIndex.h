#pragma once

#include "VeltoError.h"

#include <QList>

#include <variant>

// The order of a card in its column as a float between its neighbours, so that a move rewrites one
// row, and the whole-number renumbering for when the floats between two neighbours run out.
namespace FractionalIndex {

class Failure : public VeltoError {
public:
    struct NeighboursOutOfOrder {
        double before;
        double after;
        bool operator==(const NeighboursOutOfOrder &) const = default;
    };
    struct Exhausted {
        double before;
        double after;
        bool operator==(const Exhausted &) const = default;
    };
    using Reason = std::variant<NeighboursOutOfOrder, Exhausted>;

    explicit Failure(Reason reason);

    [[nodiscard]] const Reason &reason() const { return m_reason; }

private:
    Reason m_reason;
};

// The order for a card inserted before the element at `position` of `orders` (ascending, the
// moving card left out). Positions at or past either end step 1.0 beyond it and never fail.
[[nodiscard]] double orderForPosition(const QList<double> &orders, qint64 position);

// 0.0, 1.0, ... up to count - 1; empty for a count below 1.
[[nodiscard]] QList<double> renumbered(qint64 count);

} // namespace FractionalIndex
