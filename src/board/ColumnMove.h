#pragma once

// The four moves of a card within its column, as the context menu offers them.
enum class ColumnMove { top, up, down, bottom };
