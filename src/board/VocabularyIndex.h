#pragma once

#include <algorithm>
#include <optional>

// A closed vocabulary as the views pass it: the index of a case in its declaration order.
namespace VocabularyIndex {

// The case at `index` of `all`, or absent when the index is out of range.
template <typename Enum, typename All>
[[nodiscard]] std::optional<Enum> caseAt(const All &all, int index)
{
    if (index < 0 || index >= int(all.size()))
        return std::nullopt;
    return all.at(size_t(index));
}

template <typename Enum, typename All>
[[nodiscard]] int indexOf(const All &all, Enum value)
{
    return int(std::ranges::find(all, value) - all.begin());
}

} // namespace VocabularyIndex
