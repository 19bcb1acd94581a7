#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tq4x
{

/// The tabs before an element, for levels 0 to 16; other levels are clamped into that range.
std::string_view Indent(int level);

/// "true" or "false".
std::string_view BoolText(bool flag);

/// Code page numbers that the core knows by name.
inline constexpr unsigned CodePageUtf8 = 65001;
inline constexpr unsigned CodePageShiftJis = 932;

/// The process-wide code page of all narrow strings in the core. Windows: the system's; elsewhere UTF-8
/// unless `SetSystemCodePage` was called.
unsigned SystemCodePage();
void SetSystemCodePage(unsigned codePage);

/// Turns text of the system's code page into UTF-8. The identity where the code page is UTF-8. In others,
/// bytes that form no character become U+FFFD.
std::string ToUtf8(std::string_view text);

/// Number of bytes of the character at `position` in the system's code page: a lead byte takes its trail byte
/// with it if one follows, a well-formed UTF-8 sequence counts whole, anything else is 1. `position` is
/// inside the text.
std::size_t CharacterLength(std::string_view text, std::size_t position);

/// A name that is safe for a file and inside a reference: letters, digits, "-", "." and "_" stay, any other
/// character becomes one "_", however many bytes it has in the system's code page.
std::string LegalName(std::string_view text);

} // namespace tq4x
