#include "pipeline/CodePage.h"

#include "pipeline/TextHelpers.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace tq4x
{
namespace
{

std::wstring Widen(unsigned codePage, std::string_view text)
{
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), size, wide.data(), length);
    return wide;
}

} // namespace

unsigned DefaultCodePage()
{
    return GetACP();
}

bool IsLeadByte(unsigned codePage, char byte)
{
    return codePage != CodePageUtf8 && IsDBCSLeadByteEx(codePage, static_cast<BYTE>(byte)) != 0;
}

std::string ConvertToUtf8(unsigned codePage, std::string_view text)
{
    const std::wstring wide = Widen(codePage, text);
    const int size = static_cast<int>(wide.size());
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, out.data(), length, nullptr, nullptr);
    return out;
}

} // namespace tq4x
