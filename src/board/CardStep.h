#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <optional>

// Where the keyboard's focus goes from one card of the board to another.
namespace CardStep {
Q_NAMESPACE
QML_ELEMENT

enum class Step { up, down, left, right, first, last };
Q_ENUM_NS(Step)

// The card a step leads to from `cardID`, over the board's columns as shown, left to right, each
// its card ids from the top. Up and down stay in the column; left and right go to the nearest
// non-empty column that way, to the card at the same height or its last; first and last are the
// column's ends. Nothing when the step leads off the board or the card is not on it.
[[nodiscard]] std::optional<QString> after(const QList<QStringList> &columns, const QString &cardID, Step step);

} // namespace CardStep
