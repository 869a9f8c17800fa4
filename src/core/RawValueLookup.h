#pragma once

#include <QAnyStringView>
#include <QString>

#include <initializer_list>
#include <optional>

// The case of a closed vocabulary whose stored word is `raw`: each case is asked for its own
// `rawValue`, so the words are spelled in one place only. Exact and case-sensitive. The word may
// be a view of a row's bytes, so that reading a row makes no string of it.
template <typename Enum, typename Cases = std::initializer_list<Enum>>
std::optional<Enum> caseWithRawValue(const Cases &cases, QAnyStringView raw)
{
    for (Enum candidate : cases) {
        if (QAnyStringView::equal(rawValue(candidate), raw))
            return candidate;
    }
    return std::nullopt;
}
