#include "pipeline/NumberText.h"

#include "pipeline/ParseClassic.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace tq4x
{
namespace
{

constexpr int SignificantDigits = 6;
constexpr int FixedDigits = 6;

template<typename Number, typename... Format>
void Append(std::string& text, Number number, Format... format)
{
    std::array<char, 32> digits;
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number, format...);
    text.append(digits.data(), end);
}

bool IsSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// A number found at the head of a text, and how many characters it took; none where there are no digits.
template<typename Number>
struct Found
{
    Number Value{};
    std::size_t Length = 0;
};

Found<std::int32_t> FindInteger(std::string_view text)
{
    std::size_t start = 0;
    while (start < text.size() && IsSpace(text[start]))
        ++start;
    const bool isMinus = start < text.size() && text[start] == '-';
    const std::size_t digits = start + (start < text.size() && text[start] == '+' ? 1 : 0);
    if (digits > start && digits < text.size() && text[digits] == '-')
        return {};
    std::int32_t value = 0;
    const auto [end, error] = std::from_chars(text.data() + digits, text.data() + text.size(), value);
    if (error == std::errc::invalid_argument)
        return {};
    if (error == std::errc::result_out_of_range)
        value = isMinus ? std::numeric_limits<std::int32_t>::min() : std::numeric_limits<std::int32_t>::max();
    return {value, static_cast<std::size_t>(end - text.data())};
}

float NarrowInsideRange(double value)
{
    constexpr double largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::isfinite(value) ? std::clamp(value, -largest, largest) : value);
}

bool IsInfinityWord(std::string_view text)
{
    return text.find_first_of("iI") != std::string_view::npos;
}

Found<float> FindDecimal(std::string_view text)
{
    const std::string copy(text);
    const char* end = nullptr;
    const double value = ParseClassic(copy.c_str(), &end);
    const auto length = static_cast<std::size_t>(end - copy.c_str());
    if (std::isinf(value) && !IsInfinityWord(text.substr(0, length)))
        return {std::copysign(std::numeric_limits<float>::max(), static_cast<float>(value)), length};
    return {NarrowInsideRange(value), length};
}

/// True for a text that is taken up whole and does not begin with white space.
template<typename Number>
bool IsWhole(const Found<Number>& found, std::string_view text)
{
    return found.Length == text.size() && !text.empty() && !IsSpace(text[0]);
}

} // namespace

void AppendNumber(std::string& text, std::int64_t number)
{
    Append(text, number);
}

void AppendNumber(std::string& text, std::uint64_t number)
{
    Append(text, number);
}

void AppendNumber(std::string& text, float number)
{
    Append(text, number, std::chars_format::general, SignificantDigits);
}

void AppendNumber(std::string& text, double number)
{
    Append(text, number, std::chars_format::general, SignificantDigits);
}

std::string FixedText(float number)
{
    std::array<char, 64> digits; // the largest float has 39 digits before the point
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                            std::chars_format::fixed, FixedDigits);
    return std::string(digits.data(), end);
}

std::string ShortestText(float number)
{
    std::string text;
    Append(text, number);
    return text;
}

std::int32_t ParseInteger(std::string_view text)
{
    return FindInteger(text).Value;
}

float ParseDecimal(std::string_view text)
{
    return FindDecimal(text).Value;
}

bool IsIntegerText(std::string_view text)
{
    return IsWhole(FindInteger(text), text);
}

bool IsDecimalText(std::string_view text)
{
    const Found<float> found = FindDecimal(text);
    return IsWhole(found, text) && std::isfinite(found.Value);
}

} // namespace tq4x
