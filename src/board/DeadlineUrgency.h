#pragma once

#include <QString>

// How pressing a deadline is, from least to most.
enum class DeadlineUrgency { none, soon, near, overdue };

// The symbol that marks the urgency on a badge; empty for `none`, which shows no symbol.
[[nodiscard]] QString symbol(DeadlineUrgency urgency);
