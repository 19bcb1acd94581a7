#include "pages/UserDataRows.h"

#include "pipeline/NumberText.h"
#include "pipeline/TextHelpers.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <locale>
#include <sstream>

namespace tq4x
{
namespace
{

constexpr std::string_view LineEnd = "\r\n";
constexpr std::size_t NameWidth = 16;
constexpr std::size_t LongestName = 14;
constexpr std::size_t CutName = 12;
constexpr std::size_t LongestValue = 23;
constexpr std::size_t CutValue = 21;
constexpr std::size_t SizeWidth = 5;

constexpr std::array<std::string_view, 3> KindCells = {"(String) ", "(Integer)", "(Float)  "};

bool IsNameCharacter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == '.';
}

std::vector<std::string_view> LinesOf(std::string_view value)
{
    std::vector<std::string_view> lines;
    if (value.empty())
        return lines;
    for (;;) {
        const std::size_t end = value.find(LineEnd);
        lines.push_back(value.substr(0, end));
        if (end == std::string_view::npos)
            return lines;
        value.remove_prefix(end + LineEnd.size());
    }
}

std::size_t CountCharacters(std::string_view text)
{
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); at += CharacterLength(text, at))
        ++count;
    return count;
}

std::string_view FirstCharacters(std::string_view text, std::size_t count)
{
    std::size_t at = 0;
    for (; count > 0 && at < text.size(); --count)
        at += CharacterLength(text, at);
    return text.substr(0, at);
}

bool IsPrintedInteger(std::string_view line)
{
    std::string printed;
    AppendNumber(printed, std::int64_t{ParseInteger(line)});
    return printed == line;
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::size_t SkipDigits(std::string_view text, std::size_t at)
{
    while (at < text.size() && IsDigit(text[at]))
        ++at;
    return at;
}

/// Sign, digits with a point, exponent: what a decimal number is made of, and nothing else.
bool HasDecimalForm(std::string_view text)
{
    const std::size_t first = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    std::size_t at = SkipDigits(text, first);
    std::size_t digits = at - first;
    if (at < text.size() && text[at] == '.') {
        const std::size_t fraction = at + 1;
        at = SkipDigits(text, fraction);
        digits += at - fraction;
    }
    if (digits == 0)
        return false;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        const std::size_t sign = at + 1;
        const bool isSigned = sign < text.size() && (text[sign] == '+' || text[sign] == '-');
        const std::size_t exponent = sign + (isSigned ? 1 : 0);
        at = SkipDigits(text, exponent);
        if (at == exponent)
            return false;
    }
    return at == text.size();
}

/// False for a number beyond the range of a double.
bool IsFinite(std::string_view decimal)
{
    std::istringstream stream{std::string(decimal)};
    stream.imbue(std::locale::classic());
    double value = 0.0;
    return static_cast<bool>(stream >> value);
}

bool IsFloatLine(std::string_view line)
{
    return HasDecimalForm(line) && IsFinite(line);
}

template<typename Test>
std::optional<std::string_view> FindLineProblem(std::string_view value, Test isNumber, std::string_view words)
{
    const std::vector<std::string_view> lines = LinesOf(value);
    if (lines.empty())
        return "Number is empty.";
    if (!std::ranges::all_of(lines, isNumber))
        return words;
    return std::nullopt;
}

std::optional<std::string_view> FindTextProblem(std::string_view value)
{
    if (value.empty())
        return "String is empty.";
    if (value.find_first_of("<>&'\"") != std::string_view::npos)
        return "String is wrong (please don't use [<] [>] [&] ['] [double quote])";
    return std::nullopt;
}

std::size_t SizeOf(const UserDataEntry& entry)
{
    return entry.Kind == UserDataKind::String ? CountCharacters(entry.Value) : LinesOf(entry.Value).size();
}

std::string PadLeft(const std::string& text, std::size_t width)
{
    return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

} // namespace

std::string NormalizeUserDataValue(std::string_view value)
{
    std::string normalized;
    for (std::size_t at = 0; at < value.size(); ++at) {
        const bool isPair = value.substr(at, LineEnd.size()) == LineEnd;
        if (value[at] == '\r' || value[at] == '\n')
            normalized += LineEnd;
        else
            normalized += value[at];
        at += isPair ? 1 : 0;
    }
    while (normalized.ends_with(LineEnd))
        normalized.resize(normalized.size() - LineEnd.size());
    return normalized;
}

std::optional<std::string_view> FindUserDataProblem(const UserDataEntry& entry)
{
    if (entry.Name.empty())
        return "Name is empty.";
    if (!std::ranges::all_of(entry.Name, IsNameCharacter))
        return "Name is wrong (please use only [alphabetic/numeric character] [-] [_] [.])";
    switch (entry.Kind) {
    case UserDataKind::Integer:
        return FindLineProblem(entry.Value, IsPrintedInteger, "Please input integer number.");
    case UserDataKind::Float:
        return FindLineProblem(entry.Value, IsFloatLine, "Please input float number.");
    case UserDataKind::String:
        break;
    }
    return FindTextProblem(entry.Value);
}

std::string UserDataRow(const UserDataEntry& entry)
{
    return ShortenName(entry.Name) + std::string(KindCells[static_cast<std::size_t>(entry.Kind)]) + "[" +
           PadLeft(std::to_string(SizeOf(entry)), SizeWidth) + "] " + ShortenValue(entry.Value);
}

std::string ShortenName(std::string_view name)
{
    const std::size_t length = CountCharacters(name);
    if (length > LongestName)
        return std::string(FirstCharacters(name, CutName)) + "... ";
    return std::string(name) + std::string(NameWidth - length, ' ');
}

std::string ShortenValue(std::string_view value)
{
    if (CountCharacters(value) <= LongestValue)
        return std::string(value);
    return std::string(FirstCharacters(value, CutValue)) + "...";
}

} // namespace tq4x
