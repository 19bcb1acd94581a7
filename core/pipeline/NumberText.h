#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tq4x
{

/// Appends a number as the files hold it: integers in decimal, floats in general format with six significant
/// digits and an exponent of at least two digits, independent of the locale. Not-a-number and infinity give
/// "nan" and "inf". The float forms write the number as it is: snapping is the caller's choice.
void AppendNumber(std::string& text, std::int64_t number);
void AppendNumber(std::string& text, std::uint64_t number);
void AppendNumber(std::string& text, float number);
void AppendNumber(std::string& text, double number);

/// The number with exactly six digits behind the point, independent of the locale.
std::string FixedText(float number);

/// The shortest decimal that reads back as the same number.
std::string ShortestText(float number);

/// The number that a text begins with, by the C library's rules in the classic locale: leading white space
/// and a sign are taken, what follows the number is passed over, no digits give 0. Too large numbers give the
/// nearest end of the range; a decimal that overflows gives plus or minus the largest float.
std::int32_t ParseInteger(std::string_view text);
float ParseDecimal(std::string_view text);

/// True if the whole text is one number by the same rules, without white space, and finite as a float.
bool IsIntegerText(std::string_view text);
bool IsDecimalText(std::string_view text);

} // namespace tq4x
