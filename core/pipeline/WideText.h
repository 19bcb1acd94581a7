#pragma once

#include <string>
#include <string_view>

namespace tq4x
{

// Windows only: the system's calls take and give wide text. Code pages are numbers, 0 for the system's own.

/// Bytes that form no character become what the code page has for them.
std::wstring WidenText(unsigned codePage, std::string_view text);

/// A character that the code page does not have becomes "?", never one that looks like it: a name of a file
/// must not turn into that of another.
std::string NarrowText(unsigned codePage, std::wstring_view text);

} // namespace tq4x
