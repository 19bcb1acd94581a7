#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <xsi_string.h>

namespace XSI::Host
{

/// All text of the scene database and of this folder's functions is UTF-8.
CString FromUtf8(std::string_view text);
std::string ToUtf8(const CString& text);

/// The decimal number that a text starts with, blanks and a plus sign before it allowed; nothing if there is
/// none. A number too large for a double becomes the largest one of its sign.
std::optional<double> NumberAtStart(const CString& text);

} // namespace XSI::Host
