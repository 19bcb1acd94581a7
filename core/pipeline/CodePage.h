#pragma once

#include <string>
#include <string_view>

namespace tq4x
{

// What the systems answer differently; one source file for each system. Everyone else uses TextHelpers.h.

/// The code page of narrow text before anyone sets another: the system's own on Windows, UTF-8 elsewhere.
unsigned DefaultCodePage();

/// True for a byte that opens a character of two bytes in a double-byte code page; never for UTF-8.
bool IsLeadByte(unsigned codePage, char byte);

/// Turns text of a code page other than UTF-8 into UTF-8. Bytes that form no character become U+FFFD.
std::string ConvertToUtf8(unsigned codePage, std::string_view text);

} // namespace tq4x
