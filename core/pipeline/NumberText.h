#pragma once

#include <cstdint>
#include <string>

namespace tq4x
{

/// Appends a number as the files hold it: integers in decimal, floats in general format with six significant
/// digits and an exponent of at least two digits, independent of the locale. Not-a-number and infinity give
/// "nan" and "inf". The float forms write the number as it is: snapping is the caller's choice.
void AppendNumber(std::string& text, std::int64_t number);
void AppendNumber(std::string& text, std::uint64_t number);
void AppendNumber(std::string& text, float number);
void AppendNumber(std::string& text, double number);

} // namespace tq4x
