#pragma once

#include <QString>

#include <initializer_list>
#include <optional>

// The case of a closed vocabulary whose stored word is `raw`: each case is asked for its own
// `rawValue`, so the words are spelled in one place only. Exact and case-sensitive.
template <typename Enum, typename Cases = std::initializer_list<Enum>>
std::optional<Enum> caseWithRawValue(const Cases &cases, const QString &raw)
{
    for (Enum candidate : cases) {
        if (rawValue(candidate) == raw)
            return candidate;
    }
    return std::nullopt;
}
