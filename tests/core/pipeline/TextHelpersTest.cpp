#include "pipeline/TextHelpers.h"

#include "support/PlatformGuard.h"

namespace tq4x
{
namespace
{

TEST(TextHelpers, IndentIsClampedToSixteenTabs)
{
    EXPECT_EQ(Indent(0), "");
    EXPECT_EQ(Indent(3), "\t\t\t");
    EXPECT_EQ(Indent(16), std::string(16, '\t'));
    EXPECT_EQ(Indent(17), std::string(16, '\t'));
    EXPECT_EQ(Indent(-1), "");
}

TEST(TextHelpers, BoolText)
{
    EXPECT_EQ(BoolText(true), "true");
    EXPECT_EQ(BoolText(false), "false");
}

TEST(TextHelpers, TextsStayUtf8WhereThatIsTheCodePage)
{
    const test::PlatformGuard guard;
    SetSystemCodePage(CodePageUtf8);
    EXPECT_EQ(ToUtf8("a\xE8\xA1\xA8\xFF"), "a\xE8\xA1\xA8\xFF");
}

TEST(TextHelpers, DoubleByteTextBecomesUtf8)
{
    const struct
    {
        const char* Name;
        std::string Text;
        std::string Utf8;
    } cases[] = {
        {"empty", "", ""},
        {"ascii", "a\\b~", "a\\b~"},
        {"double byte with a backslash as trail byte",
         "a\x95\x5C"
         "b",
         "a\xE8\xA1\xA8"
         "b"},
        {"half-width", "\xB1", "\xEF\xBD\xB1"},
        {"lead byte at the end", "a\x95", "a\xEF\xBF\xBD"},
        {"byte that is no character",
         "\xFF"
         "a",
         "\xEF\xBF\xBD"
         "a"},
    };

    const test::PlatformGuard guard;
    SetSystemCodePage(CodePageShiftJis);
    for (const auto& row : cases)
        EXPECT_EQ(ToUtf8(row.Text), row.Utf8) << row.Name;
}

TEST(TextHelpers, LongDoubleByteTextIsConvertedWhole)
{
    const test::PlatformGuard guard;
    SetSystemCodePage(CodePageShiftJis);
    std::string text, utf8;
    for (int i = 0; i < 1000; ++i) {
        text += "\x95\x5C";
        utf8 += "\xE8\xA1\xA8";
    }
    EXPECT_EQ(ToUtf8(text), utf8);
}

TEST(TextHelpers, UnknownCodePageKeepsAscii)
{
    const test::PlatformGuard guard;
    SetSystemCodePage(54321);
    EXPECT_EQ(ToUtf8("a\xE4"
                     "b"),
              "a\xEF\xBF\xBD"
              "b");
}

TEST(TextHelpers, LegalNames)
{
    const struct
    {
        const char* Name;
        unsigned CodePage;
        std::string Text;
        std::string Legal;
    } cases[] = {
        {"legal characters stay", CodePageUtf8, "azAZ09-._", "azAZ09-._"},
        {"empty", CodePageUtf8, "", ""},
        {"blanks, quotes and brackets", CodePageUtf8, "a b\"[c]/\\:@`{", "a_b__c_______"},
        {"two bytes are one character", CodePageUtf8, "\xC3\xA4x", "_x"},
        {"three bytes are one character", CodePageUtf8, "\xE8\xA1\xA8x", "_x"},
        {"four bytes are one character", CodePageUtf8, "\xF0\x9F\x98\x80x", "_x"},
        {"stray continuation bytes", CodePageUtf8, "\x80\xBFx", "__x"},
        {"sequence cut short", CodePageUtf8, "\xE8\xA1x", "__x"},
        {"sequence at the end", CodePageUtf8, "\xE8\xA1", "__"},
        {"overlong", CodePageUtf8, "\xC0\xAF\xE0\x80\xAF", "_____"},
        {"surrogate", CodePageUtf8, "\xED\xA0\x80", "___"},
        {"above the last character", CodePageUtf8, "\xF4\x90\x80\x80", "____"},
        {"control characters", CodePageUtf8, std::string("\0\n\x7F", 3), "___"},
        {"lead byte takes its trail byte", CodePageShiftJis,
         "\x95\x5Cx\x83"
         "A",
         "_x_"},
        {"trail byte that would be legal", CodePageShiftJis,
         "\x83"
         "AA",
         "_A"},
        {"half-width byte is alone", CodePageShiftJis, "\xB1x", "_x"},
        {"lead byte at the end", CodePageShiftJis, "x\x95", "x_"},
        {"last lead byte", CodePageShiftJis, "\xFCxx\xFDx", "_x_x"},
        {"first and last trail bytes", CodePageShiftJis, "\x95\x40\x95\x7E\x95\x80\x95\xFCx", "____x"},
        {"no trail byte behind", CodePageShiftJis, "\x95/\x95?x\x95\x7Fx\x95\xFDx\x95 \x95",
         "____x__x__x___"},
        {"digits are no trail bytes", CodePageShiftJis,
         "\x95"
         "9",
         "_9"},
    };

    const test::PlatformGuard guard;
    for (const auto& row : cases) {
        SetSystemCodePage(row.CodePage);
        EXPECT_EQ(LegalName(row.Text), row.Legal) << row.Name;
    }
}

} // namespace
} // namespace tq4x
