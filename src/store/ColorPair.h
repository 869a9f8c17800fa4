#pragma once

#include <QString>

// A colour for each appearance, as "#RRGGBB" texts; which one applies is decided when drawing.
struct ColorPair {
    QString dark;
    QString light;

    bool operator==(const ColorPair &) const = default;
};
