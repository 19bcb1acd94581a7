#pragma once

#include <string>

#include <xsi_array.h>
#include <xsi_decl.h>

namespace XSI
{

class CStringArray;

/// Text of the host. It is kept in wide characters; all lengths and positions count these. Narrow text is
/// UTF-8 (on Windows the system's code page); bytes that are no such text survive a round trip.
class CString
{
public:
    /// Answer of the searches when nothing was found, and "to the end" as a length.
    static constexpr ULONG npos = 0xffffffffu;

    CString() = default;
    CString(const char* text);
    CString(const wchar_t* text);

    explicit CString(LONG number);
    explicit CString(ULONG number);
    /// The shortest text that reads back as the same number.
    explicit CString(float number);
    explicit CString(double number);

    /// Valid until the string changes or goes.
    const char* GetAsciiString() const;

    const wchar_t* GetWideString() const { return m_text.c_str(); }

    /// Replaces the text by a narrow one.
    void PutAsciiString(const char* text);

    ULONG Length() const { return static_cast<ULONG>(m_text.size()); }

    bool IsEmpty() const { return m_text.empty(); }

    void Clear();

    /// 0 outside the text.
    wchar_t GetAt(ULONG index) const;

    wchar_t operator[](ULONG index) const { return GetAt(index); }

    /// First position of a text at or behind `start`; npos if there is none or the text looked for is empty.
    ULONG FindString(const CString& text, ULONG start = 0) const;
    ULONG FindString(wchar_t character, ULONG start = 0) const;

    /// Last position that is not behind `start`; npos if there is none or the text looked for is empty.
    ULONG ReverseFindString(const CString& text, ULONG start = npos) const;
    ULONG ReverseFindString(wchar_t character, ULONG start = npos) const;

    /// At most `length` characters from `start`; empty if `start` lies outside.
    CString GetSubString(ULONG start, ULONG length = npos) const;

    /// The pieces between the separators, empty ones included: "a;;b" at ";" gives three. A text without the
    /// separator is one piece, an empty text none.
    CStringArray Split(const CString& separator) const;

    /// Equality where A to Z count as a to z, and no other letters.
    bool IsEqualNoCase(const CString& other) const;

    /// A to Z and a to z only.
    CString Upper() const;
    CString Lower() const;

    CString& operator+=(const CString& other);

    friend CString operator+(CString a, const CString& b) { return a += b; }

    friend bool operator==(const CString& a, const CString& b) { return a.m_text == b.m_text; }

    friend bool operator!=(const CString& a, const CString& b) { return !(a == b); }

    friend bool operator<(const CString& a, const CString& b) { return a.m_text < b.m_text; }

    friend bool operator>(const CString& a, const CString& b) { return b < a; }

private:
    explicit CString(std::wstring text) : m_text(std::move(text)) {}

    std::wstring m_text;
    mutable std::string m_narrow; ///< The narrow form, made when asked for.
};

class CStringArray : public CBaseArray<CString>
{
public:
    using CBaseArray::CBaseArray;
};

} // namespace XSI
