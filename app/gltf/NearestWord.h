#pragma once

#include <span>
#include <string_view>

namespace tq4x
{

/// The word that takes the fewest insertions, deletions and exchanges of letters to reach, upper and lower
/// case alike; the first of equals. Empty if no word is nearer than writing half of it anew.
[[nodiscard]] std::string_view FindNearestWord(std::string_view text,
                                               std::span<const std::string_view> words);

} // namespace tq4x
