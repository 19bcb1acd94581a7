#include "NumberForm.h"

#include <charconv>
#include <cmath>

namespace tq4x::reader
{
namespace
{

bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// Takes the digits at the front of a text off it.
std::string_view TakeDigits(std::string_view& rest)
{
    std::size_t count = 0;
    while (count < rest.size() && IsDigit(rest[count])) {
        ++count;
    }
    const std::string_view digits = rest.substr(0, count);
    rest.remove_prefix(count);
    return digits;
}

bool IsWholePart(std::string_view digits)
{
    return !digits.empty() && (digits.size() == 1 || digits[0] != '0');
}

/// An empty text or "e", a sign and two or three digits.
bool IsExponent(std::string_view text)
{
    if (text.empty()) {
        return true;
    }
    if (text.size() < 4 || text.size() > 5 || text[0] != 'e' || (text[1] != '+' && text[1] != '-')) {
        return false;
    }
    std::string_view digits = text.substr(2);
    TakeDigits(digits);
    return digits.empty();
}

std::size_t SignificantDigits(std::string_view whole, std::string_view fraction)
{
    if (whole != "0") {
        return whole.size() + fraction.size();
    }
    const std::size_t first = fraction.find_first_not_of('0');
    return first == std::string_view::npos ? 0 : fraction.size() - first;
}

bool HasNumberForm(std::string_view text)
{
    constexpr std::size_t MostDigits = 6;
    if (text == "0") {
        return true;
    }
    if (text.starts_with('-')) {
        text.remove_prefix(1);
    }
    const std::string_view whole = TakeDigits(text);
    std::string_view fraction;
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        fraction = TakeDigits(text);
        if (fraction.empty() || fraction.back() == '0') {
            return false;
        }
    } else if (whole == "0") {
        return false;
    }
    return IsWholePart(whole) && IsExponent(text) && SignificantDigits(whole, fraction) <= MostDigits;
}

} // namespace

std::optional<double> ParseNumber(std::string_view text)
{
    if (!HasNumberForm(text)) {
        return std::nullopt;
    }
    double value = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = result.ptr == text.data() + text.size();
    if (!isWhole || result.ec != std::errc() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<int> ParseInteger(std::string_view text)
{
    std::string_view digits = text;
    if (digits.starts_with('-')) {
        digits.remove_prefix(1);
    }
    std::string_view rest = digits;
    if (!IsWholePart(TakeDigits(rest)) || !rest.empty() || text == "-0") {
        return std::nullopt;
    }
    int value = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() ? std::optional(value) : std::nullopt;
}

std::string_view WordCursor::Next()
{
    std::size_t start = 0;
    while (start < m_rest.size() && (m_rest[start] == ' ' || m_rest[start] == '\n' || m_rest[start] == '\t' ||
                                     m_rest[start] == '\r')) {
        m_lines += m_rest[start] == '\n' ? 1 : 0;
        ++start;
    }
    std::size_t end = start;
    while (end < m_rest.size() && static_cast<unsigned char>(m_rest[end]) > ' ') {
        ++end;
    }
    // A control character that is no white space can't occur in well-formed text; as a word it is refused.
    end = end == start && start < m_rest.size() ? start + 1 : end;
    const std::string_view word = m_rest.substr(start, end - start);
    m_rest.remove_prefix(end);
    return word;
}

} // namespace tq4x::reader
