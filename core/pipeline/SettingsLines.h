#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tq4x
{

/// Walks over the lines of a text. Lines end in LF or CR LF; the last may have no end.
class LineReader
{
public:
    explicit LineReader(std::string_view text) : m_rest(text) {}

    /// The next line without its end, or nothing behind the last one. An empty text is one empty line.
    std::optional<std::string_view> Next();

private:
    std::string_view m_rest;
    bool m_isAtEnd = false;
};

/// Key and value of a line that holds exactly one "=". One quote at each end of the value is taken away.
std::optional<std::pair<std::string_view, std::string_view>> SplitKeyValue(std::string_view line);

/// Appends `Key="Value"` and a line feed.
void AppendKeyValue(std::string& text, std::string_view key, std::string_view value);

} // namespace tq4x
