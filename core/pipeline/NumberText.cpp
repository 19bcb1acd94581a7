#include "pipeline/NumberText.h"

#include <array>
#include <charconv>

namespace tq4x
{
namespace
{

constexpr int SignificantDigits = 6;

template<typename Number, typename... Format>
void Append(std::string& text, Number number, Format... format)
{
    std::array<char, 32> digits;
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number, format...);
    text.append(digits.data(), end);
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

} // namespace tq4x
