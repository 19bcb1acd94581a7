#include <xsi_string.h>

#include <algorithm>
#include <charconv>

#include "scene/NarrowText.h"

namespace XSI
{

namespace
{

template<class Number>
std::wstring TextOfNumber(Number number)
{
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    return std::wstring(buffer, result.ptr);
}

ULONG PositionOf(std::size_t found)
{
    return found == std::wstring::npos ? CString::npos : static_cast<ULONG>(found);
}

std::size_t LengthOf(ULONG length)
{
    return length == CString::npos ? std::wstring::npos : length;
}

wchar_t LowerLetter(wchar_t c)
{
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + (L'a' - L'A')) : c;
}

wchar_t UpperLetter(wchar_t c)
{
    return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - (L'a' - L'A')) : c;
}

} // namespace

CString::CString(const char* text)
{
    PutAsciiString(text);
}

CString::CString(const wchar_t* text) : m_text(text != nullptr ? text : L"") {}

CString::CString(LONG number) : m_text(TextOfNumber(number)) {}

CString::CString(ULONG number) : m_text(TextOfNumber(number)) {}

CString::CString(float number) : m_text(TextOfNumber(number)) {}

CString::CString(double number) : m_text(TextOfNumber(number)) {}

const char* CString::GetAsciiString() const
{
    if (m_narrow.empty()) {
        m_narrow = NarrowFromWide(m_text);
    }
    return m_narrow.c_str();
}

void CString::PutAsciiString(const char* text)
{
    m_text = text != nullptr ? WideFromNarrow(text) : std::wstring();
    m_narrow.clear();
}

void CString::Clear()
{
    m_text.clear();
    m_narrow.clear();
}

wchar_t CString::GetAt(ULONG index) const
{
    return index < Length() ? m_text[index] : L'\0';
}

ULONG CString::FindString(const CString& text, ULONG start) const
{
    return text.IsEmpty() ? npos : PositionOf(m_text.find(text.m_text, start));
}

ULONG CString::FindString(wchar_t character, ULONG start) const
{
    return PositionOf(m_text.find(character, start));
}

ULONG CString::ReverseFindString(const CString& text, ULONG start) const
{
    return text.IsEmpty() ? npos : PositionOf(m_text.rfind(text.m_text, LengthOf(start)));
}

ULONG CString::ReverseFindString(wchar_t character, ULONG start) const
{
    return PositionOf(m_text.rfind(character, LengthOf(start)));
}

CString CString::GetSubString(ULONG start, ULONG length) const
{
    return start < Length() ? CString(m_text.substr(start, LengthOf(length))) : CString();
}

CStringArray CString::Split(const CString& separator) const
{
    CStringArray pieces;
    if (IsEmpty()) {
        return pieces;
    }
    ULONG start = 0;
    for (ULONG at = FindString(separator); at != npos; at = FindString(separator, start)) {
        pieces.Add(CString(m_text.substr(start, at - start)));
        start = at + separator.Length();
    }
    pieces.Add(CString(m_text.substr(start)));
    return pieces;
}

bool CString::IsEqualNoCase(const CString& other) const
{
    return std::equal(m_text.begin(), m_text.end(), other.m_text.begin(), other.m_text.end(),
                      [](wchar_t a, wchar_t b) { return LowerLetter(a) == LowerLetter(b); });
}

CString CString::Upper() const
{
    std::wstring text = m_text;
    std::transform(text.begin(), text.end(), text.begin(), UpperLetter);
    return CString(std::move(text));
}

CString CString::Lower() const
{
    std::wstring text = m_text;
    std::transform(text.begin(), text.end(), text.begin(), LowerLetter);
    return CString(std::move(text));
}

CString& CString::operator+=(const CString& other)
{
    m_text += other.m_text;
    m_narrow.clear();
    return *this;
}

} // namespace XSI
