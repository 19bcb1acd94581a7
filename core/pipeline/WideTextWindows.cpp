#include "pipeline/WideText.h"

#include "pipeline/TextHelpers.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace tq4x
{
namespace
{

/// The flag is no part of UTF-8, which has every character.
DWORD NarrowFlags(unsigned codePage)
{
    const bool isUtf8 = codePage == CodePageUtf8 || (codePage == CP_ACP && GetACP() == CodePageUtf8);
    return isUtf8 ? 0 : WC_NO_BEST_FIT_CHARS;
}

} // namespace

std::wstring WidenText(unsigned codePage, std::string_view text)
{
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), size, wide.data(), length);
    return wide;
}

std::string NarrowText(unsigned codePage, std::wstring_view text)
{
    const DWORD flags = NarrowFlags(codePage);
    const int size = static_cast<int>(text.size());
    const int length = WideCharToMultiByte(codePage, flags, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(codePage, flags, text.data(), size, narrow.data(), length, nullptr, nullptr);
    return narrow;
}

} // namespace tq4x
