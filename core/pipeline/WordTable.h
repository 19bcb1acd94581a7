#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace tq4x
{

/// One row of a word table: an enumerator and its word in the files.
template<typename Enum>
struct WordRow
{
    Enum Value;
    std::string_view Word;
};

/// Builds the words of an enumeration as an array indexed by the value. `Last` is the last enumerator: a
/// missing row does not compile, and neither does a row out of order.
template<auto Last>
consteval auto WordTable(const WordRow<decltype(Last)> (&rows)[static_cast<std::size_t>(Last) + 1])
{
    constexpr std::size_t count = static_cast<std::size_t>(Last) + 1;
    std::array<std::string_view, count> words{};
    for (std::size_t i = 0; i < count; ++i) {
        if (static_cast<std::size_t>(rows[i].Value) != i)
            throw "word table rows must stand in the order of their values";
        words[i] = rows[i].Word;
    }
    return words;
}

/// The word of a value that is inside its table.
template<typename Enum, std::size_t Count>
constexpr std::string_view WordOf(const std::array<std::string_view, Count>& words, Enum value)
{
    return words[static_cast<std::size_t>(value)];
}

/// The first value whose word equals the text exactly; nothing if there is none.
template<typename Enum, std::size_t Count>
constexpr std::optional<Enum> FindWord(const std::array<std::string_view, Count>& words,
                                       std::string_view text)
{
    for (std::size_t i = 0; i < Count; ++i)
        if (words[i] == text)
            return static_cast<Enum>(i);
    return std::nullopt;
}

} // namespace tq4x
