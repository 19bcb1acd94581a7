#include "pipeline/SettingsLines.h"

namespace tq4x
{

std::optional<std::string_view> LineReader::Next()
{
    if (m_isAtEnd)
        return std::nullopt;
    const std::size_t end = m_rest.find('\n');
    m_isAtEnd = end == std::string_view::npos;
    std::string_view line = m_rest.substr(0, end);
    m_rest.remove_prefix(m_isAtEnd ? m_rest.size() : end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

std::optional<std::pair<std::string_view, std::string_view>> SplitKeyValue(std::string_view line)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || line.find('=', equals + 1) != std::string_view::npos)
        return std::nullopt;
    std::string_view value = line.substr(equals + 1);
    if (value.ends_with('"'))
        value.remove_suffix(1);
    if (value.starts_with('"'))
        value.remove_prefix(1);
    return std::pair(line.substr(0, equals), value);
}

void AppendKeyValue(std::string& text, std::string_view key, std::string_view value)
{
    text.append(key).append("=\"").append(value).append("\"\n");
}

} // namespace tq4x
