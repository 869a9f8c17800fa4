#pragma once

#include <QtGlobal>

// How many of a card's checklist items are ticked, out of how many.
struct ChecklistProgress {
    qint64 done = 0;
    qint64 total = 0;

    bool operator==(const ChecklistProgress &) const = default;
};
