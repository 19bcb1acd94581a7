#include "scene/NarrowText.h"

#include <windows.h>

namespace XSI
{

// Where the system's code page is UTF-8 the calls would lose what is no text, which we keep.

std::wstring WideFromNarrow(std::string_view text)
{
    if (GetACP() == CP_UTF8) {
        return WideFromUtf8(text);
    }
    const int size = static_cast<int>(text.size());
    const int needed = MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(needed), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), needed);
    return wide;
}

// Characters that the code page does not have become "?", not others that look like them.
std::string NarrowFromWide(std::wstring_view text)
{
    if (GetACP() == CP_UTF8) {
        return Utf8FromWide(text);
    }
    const int size = static_cast<int>(text.size());
    const auto convert = [&](char* into, int room) {
        return WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), size, into, room, nullptr,
                                   nullptr);
    };
    std::string narrow(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
    convert(narrow.data(), static_cast<int>(narrow.size()));
    return narrow;
}

} // namespace XSI
