#pragma once

#include <QColor>
#include <QList>
#include <QString>

#include <optional>

// The colours a project or a tag can carry. What is stored is always a slot's light value; its
// hand-picked dark partner is swapped in only when drawing, so a stored colour never changes with
// the appearance, and a colour from outside the palette is drawn as it is.
namespace ProjectPalette {

struct Slot {
    QString name;
    QString light;
    QString dark;

    bool operator==(const Slot &) const = default;
};

// The order is the dealing order for new projects and the order of the colour menu.
[[nodiscard]] const QList<Slot> &orderedSlots();

// The colour a new project is dealt after one made in `color`: the light value of the next slot,
// Blue again after Red. A colour that is not exactly a slot's light value is kept, so a colour the
// user typed elsewhere is not replaced behind their back.
[[nodiscard]] QString colorDealtAfter(const QString &color);

// The grey of something with no project or tag colour; it is no slot, so it is the same in both
// appearances.
[[nodiscard]] QString neutral();

// The dark partner of a stored palette colour, matched whatever its case; any other text as given.
[[nodiscard]] QString darkVariant(const QString &stored);

} // namespace ProjectPalette

// A colour written as six hexadecimal digits, with or without one leading "#"; absent otherwise.
[[nodiscard]] std::optional<QColor> colorFromHex(const QString &text);
