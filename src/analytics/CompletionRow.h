#pragma once

#include <QString>

// How many cards last moved into Complete in one week.
struct CompletionRow {
    QString weekLabel;
    int count = 0;

    bool operator==(const CompletionRow &) const = default;
};
