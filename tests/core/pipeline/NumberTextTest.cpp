#include "pipeline/NumberText.h"

#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>

namespace tq4x
{
namespace
{

template<typename Number>
std::string Text(Number number)
{
    std::string text;
    AppendNumber(text, number);
    return text;
}

TEST(NumberText, FloatsHaveSixSignificantDigits)
{
    const struct
    {
        float Number;
        const char* Text;
    } cases[] = {
        {0.0f, "0"},
        {1.0f, "1"},
        {-2.5f, "-2.5"},
        {0.1f, "0.1"},
        {1.0f / 3.0f, "0.333333"},
        {123456.0f, "123456"},
        {1234567.0f, "1.23457e+06"},
        {1e6f, "1e+06"},
        {2.5e-5f, "2.5e-05"},
        {0.0001f, "0.0001"},
        {1e-10f, "1e-10"},
        {3.4028235e38f, "3.40282e+38"},
        {1e-45f, "1.4013e-45"},
        {-0.0f, "-0"},
        {std::numeric_limits<float>::infinity(), "inf"},
        {-std::numeric_limits<float>::infinity(), "-inf"},
        {std::numeric_limits<float>::quiet_NaN(), "nan"},
    };

    for (const auto& row : cases)
        EXPECT_EQ(Text(row.Number), row.Text);
}

TEST(NumberText, WideNumbers)
{
    EXPECT_EQ(Text(0.1), "0.1");
    EXPECT_EQ(Text(1e100), "1e+100");
    EXPECT_EQ(Text(std::int64_t{-9223372036854775807 - 1}), "-9223372036854775808");
    EXPECT_EQ(Text(std::uint64_t{18446744073709551615u}), "18446744073709551615");
}

TEST(NumberText, EqualsTheCLibraryOnRandomBits)
{
    std::mt19937 random(20130409);
    for (int i = 0; i < 100000; ++i) {
        const auto bits = static_cast<std::uint32_t>(random());
        float number = 0.0f;
        std::memcpy(&number, &bits, sizeof number);
        if (std::isnan(number))
            continue;
        char general[64], fixed[64];
        std::snprintf(general, sizeof general, "%.6g", static_cast<double>(number));
        std::snprintf(fixed, sizeof fixed, "%f", static_cast<double>(number));
        ASSERT_EQ(Text(number), general) << "seed 20130409, bits " << bits;
        ASSERT_EQ(FixedText(number), fixed) << "seed 20130409, bits " << bits;
    }
}

TEST(NumberText, ShortestTextReadsBackEqual)
{
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) {
        const auto bits = static_cast<std::uint32_t>(random());
        float number = 0.0f;
        std::memcpy(&number, &bits, sizeof number);
        if (std::isfinite(number)) {
            ASSERT_EQ(ParseDecimal(ShortestText(number)), number) << "seed 7, bits " << bits;
        }
    }
}

TEST(NumberText, IntegersFromText)
{
    const struct
    {
        std::string Text;
        std::int32_t Number;
        bool IsWhole;
    } cases[] = {
        {"0", 0, true},
        {"42", 42, true},
        {"-42", -42, true},
        {"+42", 42, true},
        {"007", 7, true},
        {"2147483647", 2147483647, true},
        {"-2147483648", -2147483647 - 1, true},
        {"2147483648", 2147483647, true},
        {"-99999999999999999999", -2147483647 - 1, true},
        {" \t\n42", 42, false},
        {"42x", 42, false},
        {"42.9", 42, false},
        {"1e3", 1, false},
        {"0x10", 0, false},
        {"", 0, false},
        {" ", 0, false},
        {"x", 0, false},
        {"-", 0, false},
        {"+-5", 0, false},
        {"-+5", 0, false},
        {"- 5", 0, false},
        {std::string("5\0", 2), 5, false},
    };

    for (const auto& row : cases) {
        EXPECT_EQ(ParseInteger(row.Text), row.Number) << row.Text;
        EXPECT_EQ(IsIntegerText(row.Text), row.IsWhole) << row.Text;
    }
}

TEST(NumberText, DecimalsFromText)
{
    constexpr float largest = std::numeric_limits<float>::max();
    constexpr float infinity = std::numeric_limits<float>::infinity();

    const struct
    {
        std::string Text;
        float Number;
        bool IsWhole;
    } cases[] = {
        {"0", 0.0f, true},
        {"1.5", 1.5f, true},
        {"-.5", -0.5f, true},
        {"+2.", 2.0f, true},
        {"1e3", 1000.0f, true},
        {"1e39", largest, true},
        {"-1e39", -largest, true},
        {"1e400", largest, true},
        {"-1e400", -largest, true},
        {"1e-400", 0.0f, true},
        {" 1.5", 1.5f, false},
        {"1.5mm", 1.5f, false},
        {"1,5", 1.0f, false},
        {"1e", 1.0f, false},
        {"", 0.0f, false},
        {"x", 0.0f, false},
        {"-", 0.0f, false},
        {"inf", infinity, false},
        {"-Infinity", -infinity, false},
        {std::string("1\0", 2), 1.0f, false},
    };

    for (const auto& row : cases) {
        EXPECT_EQ(ParseDecimal(row.Text), row.Number) << row.Text;
        EXPECT_EQ(IsDecimalText(row.Text), row.IsWhole) << row.Text;
    }
    EXPECT_TRUE(std::isnan(ParseDecimal("nan")));
    EXPECT_FALSE(IsDecimalText("nan"));
}

TEST(NumberText, FollowsNoLocale)
{
    const std::string former = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"})
        if (std::setlocale(LC_ALL, name) != nullptr)
            break;
    EXPECT_EQ(Text(1.5f), "1.5");
    EXPECT_EQ(FixedText(1.5f), "1.500000");
    EXPECT_EQ(ParseDecimal("1.5"), 1.5f);
    std::setlocale(LC_ALL, former.c_str());
}

} // namespace
} // namespace tq4x
