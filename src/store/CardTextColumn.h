#pragma once

#include <QString>

// The two texts of a card the user writes. The one statement on `cards` built at run time names
// its column from here, so no other column, and never user text, can reach it.
enum class CardTextColumn { title, goal };

[[nodiscard]] QString columnName(CardTextColumn column);
