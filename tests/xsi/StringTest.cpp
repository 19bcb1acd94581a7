#include <xsi_string.h>

#include "PrintValues.h"

#include "scene/Text.h"

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using XSI::CString;

TEST(String, NarrowAndWideTextAreTheSameText)
{
    EXPECT_EQ(CString("abc"), CString(L"abc"));
    EXPECT_EQ(CString("\xc3\xa4\xe2\x82\xac"), CString(L"\u00e4\u20ac"));
    EXPECT_EQ(CString("\xf0\x9f\x90\xa6"), CString(L"\U0001f426"));
    EXPECT_EQ(CString(L"\u00e4").Length(), 1u);
    EXPECT_STREQ(CString(L"\u20ac").GetAsciiString(), "\xe2\x82\xac");
    EXPECT_STREQ(CString("abc").GetWideString(), L"abc");
}

TEST(String, BytesThatAreNoTextSurvive)
{
    const char* const cases[] = {
        "\x80",     "a\xffz",           "\xc3", "\xc3(", "\xe2\x82", "\xed\xa0\x80", "\xf5\x80\x80\x80",
        "\xc0\xaf", "\xf0\x80\x80\x80",
    };
    for (const char* text : cases) {
        EXPECT_STREQ(CString(CString(text).GetWideString()).GetAsciiString(), text);
    }
}

TEST(String, NullPointersAreEmpty)
{
    EXPECT_TRUE(CString(static_cast<const char*>(nullptr)).IsEmpty());
    EXPECT_TRUE(CString(static_cast<const wchar_t*>(nullptr)).IsEmpty());
    EXPECT_STREQ(CString().GetAsciiString(), "");
    EXPECT_STREQ(CString().GetWideString(), L"");
}

TEST(String, NumbersInTheirShortestForm)
{
    EXPECT_EQ(CString(LONG{-12}), L"-12");
    EXPECT_EQ(CString(ULONG{4294967295u}), L"4294967295");
    EXPECT_EQ(CString(0.1), L"0.1");
    EXPECT_EQ(CString(0.1f), L"0.1");
    EXPECT_EQ(CString(1e300), L"1e+300");
}

TEST(String, TheNarrowFormFollowsChanges)
{
    CString text("a");
    EXPECT_STREQ(text.GetAsciiString(), "a");
    text += L"b";
    EXPECT_STREQ(text.GetAsciiString(), "ab");
    text.PutAsciiString("c");
    EXPECT_STREQ(text.GetAsciiString(), "c");
    text.Clear();
    EXPECT_STREQ(text.GetAsciiString(), "");
    EXPECT_EQ(CString("x") + L"y" + CString(LONG{3}), L"xy3");
}

TEST(String, Search)
{
    const CString text = L"name[1..30].[x]";
    EXPECT_EQ(text.FindString(L"["), 4u);
    EXPECT_EQ(text.FindString(L'[', 5), 12u);
    EXPECT_EQ(text.FindString(L"..", 4), 6u);
    EXPECT_EQ(text.FindString(L"?"), CString::npos);
    EXPECT_EQ(text.FindString(L""), CString::npos);
    EXPECT_EQ(text.FindString(L"[", 100), CString::npos);
    EXPECT_EQ(text.ReverseFindString(L"["), 12u);
    EXPECT_EQ(text.ReverseFindString(L'[', 11), 4u);
    EXPECT_EQ(text.ReverseFindString(L"?"), CString::npos);
    EXPECT_EQ(CString().ReverseFindString(L"a"), CString::npos);
}

TEST(String, SubStrings)
{
    const CString text = L"abcdef";
    EXPECT_EQ(text.GetSubString(2), L"cdef");
    EXPECT_EQ(text.GetSubString(2, 3), L"cde");
    EXPECT_EQ(text.GetSubString(4, 100), L"ef");
    EXPECT_EQ(text.GetSubString(2, 0), L"");
    EXPECT_EQ(text.GetSubString(6), L"");
    EXPECT_EQ(text.GetSubString(100, 1), L"");
    EXPECT_EQ(text[1], L'b');
    EXPECT_EQ(text.GetAt(6), L'\0');
}

TEST(String, Split)
{
    EXPECT_THAT(Pieces(CString("a;b;c").Split(L";")), ElementsAre("a", "b", "c"));
    EXPECT_THAT(Pieces(CString("1..30").Split(L"..")), ElementsAre("1", "30"));
    EXPECT_THAT(Pieces(CString(";a;;").Split(L";")), ElementsAre("", "a", "", ""));
    EXPECT_THAT(Pieces(CString("abc").Split(L";")), ElementsAre("abc"));
    EXPECT_THAT(Pieces(CString("abc").Split(L"")), ElementsAre("abc"));
    EXPECT_THAT(Pieces(CString("").Split(L";")), IsEmpty());
}

TEST(String, CaseOfLatinLettersOnly)
{
    EXPECT_TRUE(CString("A.TGA").IsEqualNoCase(L"a.tga"));
    EXPECT_FALSE(CString("a.tga").IsEqualNoCase(L"a.tg"));
    EXPECT_FALSE(CString(L"\u00c4").IsEqualNoCase(L"\u00e4"));
    EXPECT_FALSE(CString("[").IsEqualNoCase(L"{"));
    EXPECT_EQ(CString(L"aB1\u00e4").Upper(), CString(L"AB1\u00e4"));
    EXPECT_EQ(CString(L"aB1\u00c4").Lower(), CString(L"ab1\u00c4"));
}

TEST(String, Order)
{
    EXPECT_LT(CString("a"), CString("ab"));
    EXPECT_GT(CString("b"), CString("ab"));
    EXPECT_NE(CString("a"), CString("A"));
}

TEST(String, NumberAtTheStart)
{
    const struct
    {
        const char* Text;
        std::optional<double> Number;
    } cases[] = {
        {"12", 12.0},
        {" \t-1.5x", -1.5},
        {"+3", 3.0},
        {"1e3", 1000.0},
        {"1e999", std::numeric_limits<double>::max()},
        {"-1e999", -std::numeric_limits<double>::max()},
        {"1e-999", 0.0},
        {"", std::nullopt},
        {"  ", std::nullopt},
        {"+", std::nullopt},
        {"+-3", std::nullopt},
        {"x1", std::nullopt},
    };

    for (const auto& test : cases) {
        EXPECT_EQ(XSI::Host::NumberAtStart(test.Text), test.Number) << '"' << test.Text << '"';
    }
}

} // namespace
} // namespace tq4x::test
