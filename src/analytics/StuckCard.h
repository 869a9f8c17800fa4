#pragma once

#include "Card.h"

#include <QString>

#include <optional>

// A card that has waited on others for more than a week; `days` counts whole 24-hour periods.
struct StuckCard {
    Card card;
    int days = 0;
    std::optional<QString> projectName;

    bool operator==(const StuckCard &) const = default;
};
