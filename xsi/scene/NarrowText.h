#pragma once

#include <string>
#include <string_view>

namespace XSI
{

/// Narrow text to wide and back. Narrow text is UTF-8, on Windows the system's code page. A byte that is no
/// UTF-8 becomes a lone surrogate of its own and turns back into the same byte.
std::wstring WideFromNarrow(std::string_view text);
std::string NarrowFromWide(std::wstring_view text);

/// The same for UTF-8 on every platform.
std::wstring WideFromUtf8(std::string_view text);
std::string Utf8FromWide(std::wstring_view text);

} // namespace XSI
