#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace tq4x::reader
{

/// A finite number in the form of the files: at most six significant digits, no plus sign, no trailing zeros
/// behind the point, no minus zero, an exponent of two or three digits. Nothing for any other text.
[[nodiscard]] std::optional<double> ParseNumber(std::string_view text);

/// A whole decimal number without leading zeros or plus sign that fits 32 bits.
[[nodiscard]] std::optional<int> ParseInteger(std::string_view text);

/// Walks over the words of a text, parted by white space.
class WordCursor
{
public:
    explicit WordCursor(std::string_view text) : m_rest(text) {}

    /// The next word, empty at the end.
    std::string_view Next();

    /// Line ends passed so far.
    [[nodiscard]] long Lines() const { return m_lines; }

private:
    std::string_view m_rest;
    long m_lines = 0;
};

} // namespace tq4x::reader
