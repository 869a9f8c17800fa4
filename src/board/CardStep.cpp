#include "CardStep.h"

#include <algorithm>

namespace CardStep {

namespace {

// The nearest column with cards from `column` in the direction `by`, or -1.
qsizetype nearestFilledColumn(const QList<QStringList> &columns, qsizetype column, qsizetype by)
{
    for (qsizetype next = column + by; next >= 0 && next < columns.size(); next += by) {
        if (!columns.at(next).isEmpty())
            return next;
    }
    return -1;
}

} // namespace

std::optional<QString> after(const QList<QStringList> &columns, const QString &cardID, Step step)
{
    for (qsizetype column = 0; column < columns.size(); ++column) {
        const QStringList &cards = columns.at(column);
        const qsizetype row = cards.indexOf(cardID);
        if (row < 0)
            continue;
        qsizetype target = row;
        switch (step) {
        case Step::up: target = row - 1; break;
        case Step::down: target = row + 1; break;
        case Step::first: target = 0; break;
        case Step::last: target = cards.size() - 1; break;
        case Step::left:
        case Step::right: {
            const qsizetype next = nearestFilledColumn(columns, column, step == Step::left ? -1 : 1);
            if (next < 0)
                return std::nullopt;
            return columns.at(next).at(std::min(row, columns.at(next).size() - 1));
        }
        }
        if (target < 0 || target >= cards.size() || target == row)
            return std::nullopt;
        return cards.at(target);
    }
    return std::nullopt;
}

} // namespace CardStep
