#include "pipeline/TextHelpers.h"

#include "pipeline/CodePage.h"

#include <algorithm>

namespace tq4x
{
namespace
{

constexpr std::string_view Tabs = "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t";

unsigned& CodePage()
{
    static unsigned codePage = DefaultCodePage();
    return codePage;
}

/// The lead bytes of UTF-8, the bytes of their sequences, and the range of the first byte behind the lead
/// byte, which keeps out overlong forms, surrogates and what lies above U+10FFFF.
struct Utf8Lead
{
    unsigned char First, Last;
    std::size_t Length;
    unsigned char SecondLow, SecondHigh;
};

constexpr Utf8Lead Utf8Leads[] = {
    {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF}, {0xE1, 0xEC, 3, 0x80, 0xBF},
    {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF}, {0xF0, 0xF0, 4, 0x90, 0xBF},
    {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

bool IsInside(char byte, unsigned char low, unsigned char high)
{
    const auto value = static_cast<unsigned char>(byte);
    return value >= low && value <= high;
}

bool IsSequence(std::string_view text, const Utf8Lead& lead)
{
    if (text.size() < lead.Length || !IsInside(text[1], lead.SecondLow, lead.SecondHigh))
        return false;
    return std::ranges::all_of(text.substr(2, lead.Length - 2),
                               [](char c) { return IsInside(c, 0x80, 0xBF); });
}

std::size_t Utf8Length(std::string_view text)
{
    for (const Utf8Lead& lead : Utf8Leads)
        if (IsInside(text[0], lead.First, lead.Last))
            return IsSequence(text, lead) ? lead.Length : 1;
    return 1;
}

/// The bytes that may stand behind a lead byte. Another one is a character of its own, so that a damaged text
/// can't hide a separator.
bool IsTrailByte(unsigned codePage, char byte)
{
    return IsInside(byte, 0x40, 0x7E) || IsInside(byte, 0x80, codePage == CodePageShiftJis ? 0xFC : 0xFE);
}

bool IsLegal(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' ||
           c == '.' || c == '_';
}

} // namespace

std::string_view Indent(int level)
{
    const int clamped = std::clamp(level, 0, static_cast<int>(Tabs.size()));
    return Tabs.substr(0, static_cast<std::size_t>(clamped));
}

std::string_view BoolText(bool flag)
{
    return flag ? "true" : "false";
}

unsigned SystemCodePage()
{
    return CodePage();
}

void SetSystemCodePage(unsigned codePage)
{
    CodePage() = codePage;
}

std::string ToUtf8(std::string_view text)
{
    return CodePage() == CodePageUtf8 ? std::string(text) : ConvertToUtf8(CodePage(), text);
}

std::size_t CharacterLength(std::string_view text, std::size_t position)
{
    const std::string_view rest = text.substr(position);
    if (CodePage() == CodePageUtf8)
        return Utf8Length(rest);
    const bool isPair =
        rest.size() > 1 && IsLeadByte(CodePage(), rest[0]) && IsTrailByte(CodePage(), rest[1]);
    return isPair ? 2 : 1;
}

std::string LegalName(std::string_view text)
{
    std::string legal;
    legal.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); i += CharacterLength(text, i))
        legal += IsLegal(text[i]) ? text[i] : '_';
    return legal;
}

} // namespace tq4x
