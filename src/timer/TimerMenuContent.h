#pragma once

#include "Card.h"

#include <QList>
#include <QLocale>
#include <QString>

#include <optional>

// What the timer's menu in the tray lists, top to bottom, as plain values, and the rules behind
// it: which cards it offers to switch to, and how a card's name is shortened beside the clock.
namespace TimerMenuContent {

struct Entry {
    enum class Kind { line, button, separator };
    enum class Action { none, stop, start, show };

    Kind kind = Kind::separator;
    QString text;
    bool enabled = false;
    Action action = Action::none;
    QString cardID; // the card that `start` starts

    [[nodiscard]] static Entry line(const QString &text) { return {Kind::line, text, false, Action::none, {}}; }
    [[nodiscard]] static Entry separator() { return {}; }
    [[nodiscard]] static Entry button(const QString &text, Action action, bool enabled = true,
                                      const QString &cardID = {})
    {
        return {Kind::button, text, enabled, action, cardID};
    }

    bool operator==(const Entry &) const = default;
};

// At most eight cards in progress or of priority now, wherever they stand: by priority, then by
// name in the locale's order with numbers read as numbers, so "Report 9" comes before "Report 10".
inline constexpr int workListLimit = 8;
[[nodiscard]] QList<Card> workList(const QList<Card> &cards, const QLocale &locale = QLocale());

// The name as it fits beside the clock: whole up to 22 user-perceived characters, otherwise the
// first 21 and "…".
[[nodiscard]] QString shortenedName(const QString &name);

// The menu for a timer running on `runningCardID` under `runningCardName` for `elapsed` seconds,
// or for none when the name is absent, over the board's `cards`.
[[nodiscard]] QList<Entry> entries(const std::optional<QString> &runningCardName, double elapsed,
                                   const QString &runningCardID, const QList<Card> &cards,
                                   const QLocale &locale = QLocale());

} // namespace TimerMenuContent
