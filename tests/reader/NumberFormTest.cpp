#include "NumberForm.h"

#include <gtest/gtest.h>

namespace tq4x::reader
{
namespace
{

TEST(NumberForm, NumbersAsTheFilesHaveThem)
{
    struct Case
    {
        const char* Text;
        double Value;
    };

    const Case cases[] = {
        {"0", 0},
        {"1", 1},
        {"-1", -1},
        {"0.5", 0.5},
        {"-0.25", -0.25},
        {"123456", 123456},
        {"1e+06", 1e6},
        {"2.5e-05", 2.5e-5},
        {"100000", 100000},
        {"0.000123", 0.000123},
        {"3.40282e+38", 3.40282e38},
        {"1.5e+100", 1.5e100},
        {"1.23456", 1.23456},
        {"-9.99999e-06", -9.99999e-6},
    };
    for (const Case& test : cases) {
        const std::optional<double> value = ParseNumber(test.Text);
        ASSERT_TRUE(value) << test.Text;
        EXPECT_EQ(*value, test.Value) << test.Text;
    }
}

TEST(NumberForm, EverythingElseIsRefused)
{
    for (const char* const text :
         {"",    "-",    "+1",   "-0",    "00",      "01",      "1.",       ".5",        "1.50",   "0.0",
          "1e6", "1e+6", "1e6+", "1E+06", "1e+0600", "nan",     "-nan",     "inf",       "-inf",   "0x10",
          "1,5", " 1",   "1 ",   "--1",   "1.2.3",   "1234567", "1.234567", "0.1234567", "1e+999", "1_0"}) {
        EXPECT_FALSE(ParseNumber(text)) << text;
    }
}

TEST(NumberForm, WholeNumbers)
{
    EXPECT_EQ(ParseInteger("0"), 0);
    EXPECT_EQ(ParseInteger("2147483647"), 2147483647);
    EXPECT_EQ(ParseInteger("-2147483648"), -2147483647 - 1);
    for (const char* const text :
         {"", "-", "-0", "01", "+1", "1.0", "2147483648", "99999999999999999999", "1 "}) {
        EXPECT_FALSE(ParseInteger(text)) << text;
    }
}

TEST(NumberForm, WordsAndLines)
{
    WordCursor cursor("  1 2\r\n\t3\n\n4");
    EXPECT_EQ(cursor.Next(), "1");
    EXPECT_EQ(cursor.Lines(), 0);
    EXPECT_EQ(cursor.Next(), "2");
    EXPECT_EQ(cursor.Next(), "3");
    EXPECT_EQ(cursor.Lines(), 1);
    EXPECT_EQ(cursor.Next(), "4");
    EXPECT_EQ(cursor.Lines(), 3);
    EXPECT_EQ(cursor.Next(), "");
}

} // namespace
} // namespace tq4x::reader
