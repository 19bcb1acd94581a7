#include "pages/UserDataRows.h"

#include <gtest/gtest.h>

#include <clocale>

namespace tq4x::test
{
namespace
{

TEST(UserDataRows, AreMadeOfFourColumns)
{
    const struct
    {
        UserDataEntry Entry;
        std::string Row;
    } Cases[] = {
        {{"speed", UserDataKind::Integer, "1\r\n2"}, "speed           (Integer)[    2] 1\r\n2"},
        {{"mass", UserDataKind::Float, "1.5"}, "mass            (Float)  [    1] 1.5"},
        {{"label", UserDataKind::String, "a\r\nb"}, "label           (String) [    4] a\r\nb"},
        {{"", UserDataKind::String, ""}, "                (String) [    0] "},
        {{"none", UserDataKind::Integer, ""}, "none            (Integer)[    0] "},
        {{"wide", UserDataKind::String, std::string(123456, 'x')},
         "wide            (String) [123456] xxxxxxxxxxxxxxxxxxxxx..."},
        {{"Größe", UserDataKind::String, "äöü"}, "Größe           (String) [    3] äöü"},
    };

    for (const auto& row : Cases)
        EXPECT_EQ(UserDataRow(row.Entry), row.Row) << row.Entry.Name;
}

TEST(UserDataRows, CutLongNames)
{
    EXPECT_EQ(ShortenName("abcdefghijklmn"), "abcdefghijklmn  ") << "14 characters";
    EXPECT_EQ(ShortenName("abcdefghijklmno"), "abcdefghijkl... ") << "15 characters";
    EXPECT_EQ(ShortenName("a"), "a               ");
    EXPECT_EQ(ShortenName("ääääääääääääää"), "ääääääääääääää  ");
    EXPECT_EQ(ShortenName("äääääääääääääää"), "ääääääääääää... ");
}

TEST(UserDataRows, CutLongValues)
{
    EXPECT_EQ(ShortenValue("12345678901234567890123"), "12345678901234567890123") << "23 characters";
    EXPECT_EQ(ShortenValue("123456789012345678901234"), "123456789012345678901...") << "24 characters";
    EXPECT_EQ(ShortenValue(""), "");
}

TEST(UserDataRows, NormalizeLineEnds)
{
    EXPECT_EQ(NormalizeUserDataValue("1\n2\r3\r\n4"), "1\r\n2\r\n3\r\n4");
    EXPECT_EQ(NormalizeUserDataValue("1\n\n2\n\n\r\n"), "1\r\n\r\n2") << "empty lines at the end go";
    EXPECT_EQ(NormalizeUserDataValue("\n\r"), "");
    EXPECT_EQ(NormalizeUserDataValue(""), "");
    EXPECT_EQ(NormalizeUserDataValue(" 1 "), " 1 ");
}

constexpr const char* WrongName =
    "Name is wrong (please use only [alphabetic/numeric character] [-] [_] [.])";
constexpr const char* WrongString = "String is wrong (please don't use [<] [>] [&] ['] [double quote])";
constexpr const char* WrongInteger = "Please input integer number.";
constexpr const char* WrongFloat = "Please input float number.";
constexpr const char* NoNumber = "Number is empty.";

std::string ProblemOf(const UserDataEntry& entry)
{
    return std::string(FindUserDataProblem(entry).value_or(""));
}

TEST(UserDataProblems, OfNames)
{
    const struct
    {
        const char* Name;
        const char* Problem;
    } Cases[] = {
        {"speed", ""},          {"A-Z_a.z09", ""},     {"-", ""},
        {"", "Name is empty."}, {"a b", WrongName},    {"a:b", WrongName},
        {"Größe", WrongName},   {"a\r\nb", WrongName}, {"a\tb", WrongName},
        {"<name>", WrongName},  {"a,b", WrongName},    {"a/b", WrongName},
        {"[", WrongName},       {"@", WrongName},      {"`", WrongName},
        {"{", WrongName},
    };

    for (const auto& row : Cases)
        EXPECT_EQ(ProblemOf({row.Name, UserDataKind::String, "x"}), row.Problem) << row.Name;
}

TEST(UserDataProblems, OfIntegers)
{
    const struct
    {
        const char* Value;
        const char* Problem;
    } Cases[] = {
        {"0", ""},
        {"-1", ""},
        {"12\r\n-3\r\n0", ""},
        {"2147483647", ""},
        {"-2147483648", ""},
        {"", NoNumber},
        {"2147483648", WrongInteger},
        {"-2147483649", WrongInteger},
        {"99999999999999999999", WrongInteger},
        {"007", WrongInteger},
        {"+5", WrongInteger},
        {"-0", WrongInteger},
        {" 1", WrongInteger},
        {"1 ", WrongInteger},
        {"1.0", WrongInteger},
        {"1e3", WrongInteger},
        {"0x10", WrongInteger},
        {"one", WrongInteger},
        {"1\r\n\r\n2", WrongInteger},
        {"1\r\nx", WrongInteger},
    };

    for (const auto& row : Cases)
        EXPECT_EQ(ProblemOf({"n", UserDataKind::Integer, row.Value}), row.Problem) << row.Value;
}

TEST(UserDataProblems, OfFloats)
{
    const struct
    {
        const char* Value;
        const char* Problem;
    } Cases[] = {
        {"0", ""},
        {"007", ""},
        {"+1.5", ""},
        {"-.5", ""},
        {"1.", ""},
        {"1e3", ""},
        {"1.5E-3\r\n2", ""},
        {"1e300", ""},
        {"1e-400", ""},
        {"", NoNumber},
        {"1e400", WrongFloat},
        {"-1e400", WrongFloat},
        {"1,5", WrongFloat},
        {"1 ", WrongFloat},
        {" 1", WrongFloat},
        {".", WrongFloat},
        {"-", WrongFloat},
        {"+-1", WrongFloat},
        {"1e", WrongFloat},
        {"1e+", WrongFloat},
        {"1.2.3", WrongFloat},
        {"0x1p3", WrongFloat},
        {"inf", WrongFloat},
        {"-nan", WrongFloat},
        {"1f", WrongFloat},
        {"1\r\n\r\n2", WrongFloat},
    };

    for (const auto& row : Cases)
        EXPECT_EQ(ProblemOf({"n", UserDataKind::Float, row.Value}), row.Problem) << row.Value;
}

TEST(UserDataProblems, OfTexts)
{
    const struct
    {
        const char* Value;
        const char* Problem;
    } Cases[] = {
        {"x", ""},
        {"a b\r\nc", ""},
        {"Größe", ""},
        {"007;/\\", ""},
        {"", "String is empty."},
        {"a<b", WrongString},
        {"a>b", WrongString},
        {"a&b", WrongString},
        {"a'b", WrongString},
        {"a\"b", WrongString},
    };

    for (const auto& row : Cases)
        EXPECT_EQ(ProblemOf({"n", UserDataKind::String, row.Value}), row.Problem) << row.Value;
}

TEST(UserDataProblems, TheNameIsToldBeforeTheValue)
{
    EXPECT_EQ(ProblemOf({"", UserDataKind::Integer, "x"}), "Name is empty.");
    EXPECT_EQ(ProblemOf({"a b", UserDataKind::Float, ""}), WrongName);
}

} // namespace
} // namespace tq4x::test
