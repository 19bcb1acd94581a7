#include "pipeline/CodePage.h"

#include "pipeline/TextHelpers.h"
#include "pipeline/WideText.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace tq4x
{
namespace
{

constexpr std::string_view ReplacementCharacter = "\xEF\xBF\xBD";

/// Whether all of the text is made of characters of the code page.
bool IsWellFormed(unsigned codePage, std::string_view text)
{
    return text.empty() || MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, text.data(),
                                               static_cast<int>(text.size()), nullptr, 0) > 0;
}

/// Bytes of the character that the text starts with, 0 if it starts with none.
std::size_t FirstCharacter(unsigned codePage, std::string_view text)
{
    if (static_cast<unsigned char>(text[0]) < 0x80) // in code pages, too, that the system does not know
        return 1;
    const std::size_t length = IsLeadByte(codePage, text[0]) ? 2 : 1;
    return length <= text.size() && IsWellFormed(codePage, text.substr(0, length)) ? length : 0;
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
    if (IsWellFormed(codePage, text))
        return NarrowText(CodePageUtf8, WidenText(codePage, text));
    std::string out;
    while (!text.empty()) {
        const std::size_t length = FirstCharacter(codePage, text);
        if (length == 0)
            out += ReplacementCharacter;
        else if (static_cast<unsigned char>(text[0]) < 0x80)
            out += text[0];
        else
            out += NarrowText(CodePageUtf8, WidenText(codePage, text.substr(0, length)));
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return out;
}

} // namespace tq4x
