#include "scene/NarrowText.h"

#include <cstdint>

namespace XSI
{

namespace
{

/// A byte that is no text is kept as this plus the byte: a code point that no text contains.
constexpr std::uint32_t StrayByteBase = 0xdc00;

bool IsContinuation(unsigned char byte)
{
    return (byte & 0xc0u) == 0x80u;
}

struct Sequence
{
    std::uint32_t CodePoint = 0;
    std::size_t Length = 1;
};

/// The length that a lead byte announces, 0 for a byte that can't lead.
std::size_t SequenceLength(unsigned char lead)
{
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xc2 && lead < 0xe0) {
        return 2;
    }
    if (lead >= 0xe0 && lead < 0xf0) {
        return 3;
    }
    return lead >= 0xf0 && lead < 0xf5 ? 4 : 0;
}

bool IsLegal(std::uint32_t codePoint, std::size_t length)
{
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = codePoint >= 0xd800 && codePoint < 0xe000;
    return codePoint >= smallest[length] && codePoint <= 0x10ffff && !isSurrogate;
}

/// The sequence at the start of a text that is not empty.
Sequence ReadSequence(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text[0]);
    const Sequence stray{StrayByteBase + lead, 1};
    const std::size_t length = SequenceLength(lead);
    if (length == 0 || length > text.size()) {
        return stray;
    }
    std::uint32_t codePoint = length == 1 ? lead : lead & (0x7fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (!IsContinuation(byte)) {
            return stray;
        }
        codePoint = (codePoint << 6) | (byte & 0x3fu);
    }
    return IsLegal(codePoint, length) ? Sequence{codePoint, length} : stray;
}

void AppendWide(std::wstring& text, std::uint32_t codePoint)
{
    if (sizeof(wchar_t) == 2 && codePoint >= 0x10000) {
        const std::uint32_t rest = codePoint - 0x10000;
        text += static_cast<wchar_t>(0xd800 + (rest >> 10));
        text += static_cast<wchar_t>(0xdc00 + (rest & 0x3ffu));
        return;
    }
    text += static_cast<wchar_t>(codePoint);
}

void AppendUtf8(std::string& text, std::uint32_t codePoint)
{
    if (codePoint >= StrayByteBase + 0x80 && codePoint < StrayByteBase + 0x100) {
        text += static_cast<char>(codePoint - StrayByteBase);
    } else if (codePoint < 0x80) {
        text += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        text += static_cast<char>(0xc0 | (codePoint >> 6));
        text += static_cast<char>(0x80 | (codePoint & 0x3fu));
    } else if (codePoint < 0x10000) {
        text += static_cast<char>(0xe0 | (codePoint >> 12));
        text += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3fu));
        text += static_cast<char>(0x80 | (codePoint & 0x3fu));
    } else {
        text += static_cast<char>(0xf0 | ((codePoint >> 18) & 0x07u));
        text += static_cast<char>(0x80 | ((codePoint >> 12) & 0x3fu));
        text += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3fu));
        text += static_cast<char>(0x80 | (codePoint & 0x3fu));
    }
}

} // namespace

std::wstring WideFromUtf8(std::string_view text)
{
    std::wstring wide;
    wide.reserve(text.size());
    while (!text.empty()) {
        const Sequence sequence = ReadSequence(text);
        AppendWide(wide, sequence.CodePoint);
        text.remove_prefix(sequence.Length);
    }
    return wide;
}

std::string Utf8FromWide(std::wstring_view text)
{
    std::string narrow;
    narrow.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto codePoint = static_cast<std::uint32_t>(text[i]);
        const bool isHigh = codePoint >= 0xd800 && codePoint < 0xdc00;
        if (sizeof(wchar_t) == 2 && isHigh && i + 1 < text.size()) {
            const auto low = static_cast<std::uint32_t>(text[i + 1]);
            if (low >= 0xdc00 && low < 0xe000) {
                codePoint = 0x10000 + ((codePoint - 0xd800) << 10) + (low - 0xdc00);
                ++i;
            }
        }
        AppendUtf8(narrow, codePoint);
    }
    return narrow;
}

} // namespace XSI
