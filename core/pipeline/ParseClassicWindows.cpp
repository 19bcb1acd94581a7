#include "pipeline/ParseClassic.h"

#include <charconv>
#include <cstring>
#include <limits>
#include <locale.h>
#include <stdlib.h>

// The system's own run-time knows neither infinities nor hexadecimal digits, so that the standard library
// reads what is in the text. That leaves out the value of what is too large or too small for a number.

namespace tq4x
{
namespace
{

const char* SkipSpaces(const char* text)
{
    while (*text == ' ' || (*text >= '\t' && *text <= '\r'))
        ++text;
    return text;
}

bool IsHexadecimal(const char* text)
{
    return text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

/// What stands for a number out of range. The run-time tells which end of the range it is.
double OutOfRange(const char* text)
{
    static const _locale_t classic = _create_locale(LC_ALL, "C");
    return _strtod_l(text, nullptr, classic) == 0.0 ? 0.0 : std::numeric_limits<double>::infinity();
}

} // namespace

double ParseClassic(const char* text, const char** end)
{
    *end = text;
    const char* start = SkipSpaces(text);
    const bool isMinus = *start == '-';
    start += isMinus || *start == '+' ? 1 : 0;
    if (*start == '-' || *start == '+')
        return 0.0;
    const char* const behind = start + std::strlen(start);
    double value = 0.0;
    std::from_chars_result found{start, std::errc::invalid_argument};
    if (IsHexadecimal(start))
        found = std::from_chars(start + 2, behind, value, std::chars_format::hex);
    if (found.ec == std::errc::invalid_argument)
        found = std::from_chars(start, behind, value);
    if (found.ec == std::errc::invalid_argument)
        return 0.0;
    *end = found.ptr;
    if (found.ec == std::errc::result_out_of_range)
        value = OutOfRange(start);
    return isMinus ? -value : value;
}

} // namespace tq4x
