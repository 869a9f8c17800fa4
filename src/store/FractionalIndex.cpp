#include "FractionalIndex.h"

#include <algorithm>
#include <charconv>
#include <cmath>

using namespace Qt::StringLiterals;

namespace FractionalIndex {

namespace {

// The shortest decimal that reads back to the same double, always with a fractional part in
// positional form ("1.0", "2.5"); very large or very small magnitudes take an exponent instead.
QString decimalText(double value)
{
    constexpr double largestPlain = 9007199254740992.0; // 2^53
    constexpr double smallestPlain = 1e-4;
    const double magnitude = std::fabs(value);
    const bool plain = magnitude == 0.0 || (magnitude >= smallestPlain && magnitude < largestPlain);
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value,
                                      plain ? std::chars_format::fixed : std::chars_format::scientific);
    QString text = QString::fromLatin1(buffer, result.ptr - buffer);
    if (plain && !text.contains(u'.'))
        text += u".0"_s;
    return text;
}

QString describe(const Failure::Reason &reason)
{
    if (auto order = std::get_if<Failure::NeighboursOutOfOrder>(&reason))
        return u"sort orders are not ascending: %1 then %2"_s.arg(decimalText(order->before),
                                                                   decimalText(order->after));
    const auto &exhausted = std::get<Failure::Exhausted>(reason);
    return u"no value fits between %1 and %2; the column needs renumbering"_s.arg(
        decimalText(exhausted.before), decimalText(exhausted.after));
}

} // namespace

Failure::Failure(Reason reason) : VeltoError(describe(reason)), m_reason(reason) {}

double orderForPosition(const QList<double> &orders, qint64 position)
{
    if (orders.isEmpty())
        return 0.0;
    if (position <= 0)
        return orders.first() - 1.0;
    if (position >= orders.size())
        return orders.last() + 1.0;

    const double before = orders.at(position - 1);
    const double after = orders.at(position);
    // Written as a negation so that a NaN neighbour counts as out of order.
    if (!(before < after))
        throw Failure(Failure::NeighboursOutOfOrder{before, after});
    // Half the gap added to the lower end: unlike (before + after) / 2 this cannot overflow.
    const double mid = before + (after - before) * 0.5;
    if (before < mid && mid < after)
        return mid;
    throw Failure(Failure::Exhausted{before, after});
}

QList<double> renumbered(qint64 count)
{
    QList<double> orders;
    orders.reserve(std::max<qint64>(count, 0));
    for (qint64 i = 0; i < count; ++i)
        orders.append(double(i));
    return orders;
}

} // namespace FractionalIndex
