#include "animation/Angles.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace tq4x
{
namespace
{

constexpr float Infinity = std::numeric_limits<float>::infinity();
const float NaN = std::numeric_limits<float>::quiet_NaN();

TEST(AnglesEqual, ComparesModuloATurn)
{
    const struct
    {
        const char* Name;
        float First;
        float Second;
        float Tolerance;
        bool IsEqual;
    } cases[] = {
        {"the same", 10, 10, 0, true},
        {"near", 10, 10.05f, 0.1f, true},
        {"exactly the tolerance apart", 1, 1.5f, 0.5f, false},
        {"a turn apart", 10, 370, 0.001f, true},
        {"a turn apart, other way", 370, 10, 0.001f, true},
        {"two turns apart", 725, 5, 0.001f, true},
        {"negative", -90, 270, 0.001f, true},
        {"both outside the first turn", -90, 630, 0.001f, true},
        {"half a turn apart", 0, 180, 1, false},
        {"either side of zero", 359.9f, 0.05f, 0.2f, false}, // the fold itself is not looked across
        {"a negative turn becomes one turn", -360, 360, 0.001f, true},
        {"two negative turns become one turn", -720, 360, 0.001f, true},
        {"a negative turn against zero", -360, 0, 0.001f, false}, // it became 360, and is compared as such
        {"full turn against zero", 360, 0, 0.001f, true},
        {"not a number", NaN, NaN, 1, false},
        {"infinite", Infinity, Infinity, 0, true},
    };

    for (const auto& c : cases)
        EXPECT_EQ(AnglesEqual(c.First, c.Second, c.Tolerance), c.IsEqual) << c.Name;
}

TEST(UnwrapAngles, ContinuesEachSampleFromTheOneBefore)
{
    const struct
    {
        const char* Name;
        std::vector<float> Samples;
        std::vector<float> Unwrapped;
        bool HasChanged;
    } cases[] = {
        {"empty", {}, {}, false},
        {"one sample", {725}, {725}, false},
        {"constant", {725, 725, 725}, {725, 725, 725}, false},
        {"over the fold upwards", {170, 179, -179, -170}, {170, 179, 181, 190}, true},
        {"over the fold downwards", {-170, 179, 170}, {-170, -181, -190}, true},
        {"exactly half a turn stays", {0, 180}, {0, 180}, false},
        {"a little more turns back", {0, 181}, {0, -179}, true},
        {"exactly a turn", {0, 360}, {0, 0}, true},
        {"many turns", {10, 3615}, {10, 15}, true},
        {"many turns down", {10, -3585}, {10, 15}, true},
        {"many turns and a half", {0, 920}, {0, -160}, true},
        {"corrected samples lead on", {0, 350, 700, 1050}, {0, -10, -20, -30}, true},
        {"small motions stay", {0, 100, 200, 300, 400}, {0, 100, 200, 300, 400}, false},
        {"infinity stays", {0, Infinity, 370}, {0, Infinity, 370}, false},
        {"too large for a turn to count", {0, 1e12f}, {0, 1e12f}, false},
        {"the largest", {-3e38f, 3e38f}, {-3e38f, 3e38f}, false},
    };

    for (const auto& c : cases) {
        std::vector<float> samples = c.Samples;
        EXPECT_EQ(UnwrapAngles(samples), c.HasChanged) << c.Name;
        EXPECT_EQ(samples, c.Unwrapped) << c.Name;
    }
}

TEST(UnwrapAngles, LeavesSamplesThatAreNotNumbers)
{
    std::vector<float> samples{0, NaN, 370, 380};
    EXPECT_FALSE(UnwrapAngles(samples));
    EXPECT_TRUE(std::isnan(samples[1]));
    EXPECT_EQ(samples[2], 370.0f);
    EXPECT_EQ(samples[3], 380.0f);
}

/// One turn after the other, each with its own rounding.
bool UnwrapTurnByTurn(std::vector<float>& samples)
{
    bool changed = false;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        const float p = samples[i - 1];
        float v = samples[i];
        const float d = v - p;
        float a = std::abs(d);
        if (!std::isfinite(a) || a - 360.0f == a)
            continue;
        while (a >= 360.0f) {
            v = d > 0.0f ? v - 360.0f : v + 360.0f;
            a -= 360.0f;
        }
        if (a > 180.0f) {
            const float c = v - p > 0.0f ? v - 360.0f : v + 360.0f;
            if (a > std::abs(c - p))
                v = c;
        }
        if (v != samples[i]) {
            samples[i] = v;
            changed = true;
        }
    }
    return changed;
}

TEST(UnwrapAngles, EqualsTheWalkTurnByTurn)
{
    std::mt19937 random(31);
    std::uniform_real_distribution<float> mantissa(-2.0f, 2.0f);
    for (int list = 0; list < 3000; ++list) {
        // Mostly what scenes have; now and then differences of up to 70,000 turns.
        std::uniform_int_distribution<int> exponent(0, list % 50 == 0 ? 23 : list % 5 == 0 ? 16 : 10);
        std::vector<float> samples;
        for (int i = 0; i < 12; ++i)
            samples.push_back(std::ldexp(mantissa(random), exponent(random)));
        std::vector<float> walked = samples;
        const bool hasWalked = UnwrapTurnByTurn(walked);
        const std::vector<float> original = samples;
        EXPECT_EQ(UnwrapAngles(samples), hasWalked) << "seed 31, list " << list;
        ASSERT_EQ(samples, walked) << "seed 31, list " << list << ": " << testing::PrintToString(original);
    }
}

TEST(UnwrapAngles, EqualsTheWalkWhereTurnsAreRounded)
{
    // Above 2^27 a turn is no multiple of the spacing of floats any more; at 2^27 to 2^28 it lies halfway
    // between two multiples, and the walk depends on odd and even.
    const float pairs[][2] = {
        {0.0f, 134217744.0f},  {0.0f, 134217760.0f},       {16.0f, 268435392.0f}, {0.1f, 300000000.0f},
        {0.0f, -134217744.0f}, {150000000.0f, 12.25f},     {-2e8f, 1e8f},         {1e8f, -2e8f},
        {134217720.0f, 0.33f}, {1000000.0f, 134217744.0f}, {500000000.0f, -1.5f}, {-0.7f, 600000000.0f},
        {1200000000.0f, 7.0f}, {0.0f, 1200000000.0f},
    };
    for (const auto& pair : pairs) {
        std::vector<float> samples{pair[0], pair[1]};
        std::vector<float> walked = samples;
        EXPECT_EQ(UnwrapAngles(samples), UnwrapTurnByTurn(walked)) << pair[0] << " to " << pair[1];
        EXPECT_EQ(std::bit_cast<std::uint32_t>(samples[1]), std::bit_cast<std::uint32_t>(walked[1]))
            << pair[0] << " to " << pair[1] << ": " << samples[1] << " and " << walked[1];
    }
}

TEST(UnwrapAngles, HugeJumpsEndAtOnce)
{
    std::vector<float> samples;
    for (int i = 0; i < 20000; ++i)
        samples.push_back(i % 2 == 0 ? 3.0e9f : -3.0e9f);
    UnwrapAngles(samples);
    for (const float sample : samples)
        ASSERT_TRUE(std::isfinite(sample));
}

TEST(RecenterAngles, MovesByWholeTurns)
{
    const struct
    {
        const char* Name;
        std::vector<float> Samples;
        std::vector<float> Moved;
        bool HasMoved;
    } cases[] = {
        {"empty", {}, {}, false},
        {"near zero", {-100, 200}, {-100, 200}, false},
        {"centred on 725", {715, 725, 735}, {-5, 5, 15}, true},
        {"centred on -725", {-715, -725, -735}, {5, -5, -15}, true},
        {"middle just inside a turn", {359.5f}, {359.5f}, false},
        {"middle just inside a negative turn", {-359.5f}, {-359.5f}, false},
        {"middle at a turn", {360}, {0}, true},
        {"middle at a negative turn", {-360}, {0}, true},
        {"rounds half up", {540}, {-180}, true},
        {"rounds half down", {-540}, {180}, true},
        {"only the range counts", {0, 0, 0, 0, 1440}, {-720, -720, -720, -720, 720}, true},
        {"infinite", {0, Infinity}, {0, Infinity}, false},
    };

    for (const auto& c : cases) {
        std::vector<float> samples = c.Samples;
        EXPECT_EQ(RecenterAngles(samples), c.HasMoved) << c.Name;
        EXPECT_EQ(samples, c.Moved) << c.Name;
    }
    std::vector<float> notNumbers{NaN, 725};
    EXPECT_FALSE(RecenterAngles(notNumbers));
    EXPECT_EQ(notNumbers[1], 725.0f);
}

TEST(DropWholeTurns, KeepsWhatLiesInsideATurn)
{
    const float cases[][2] = {{5, 5},     {360, 360}, {-360, -360}, {725, 5},
                              {-725, -5}, {361, 1},   {-361, -1},   {720, 0}};
    for (const auto& c : cases)
        EXPECT_EQ(DropWholeTurns(c[0]), c[1]) << c[0];
}

} // namespace
} // namespace tq4x
