#pragma once

#include <QString>

// Text reduced for searching without regard to case or diacritics, by Unicode's rules alone: no
// locale, so a capital I folds to i everywhere, and a dotless ı stays a letter of its own.
namespace TextFolding {

// Canonically decomposed, fully case folded ("ß" and "ẞ" become "ss", "ﬁ" becomes "fi"), and
// stripped of non-spacing marks. Two texts match when one's key occurs in the other's.
[[nodiscard]] QString searchKey(const QString &text);

} // namespace TextFolding
