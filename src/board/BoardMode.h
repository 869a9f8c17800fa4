#pragma once

// Which of the board's two main views is up: the columns, or the list of what is due soon. The
// enumerator names are the raw values QML sees.
enum class BoardMode { board, dueSoon };
