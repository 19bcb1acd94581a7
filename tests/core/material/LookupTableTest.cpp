#include "material/LookupTable.h"

#include "math/Scalar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace tq4x
{
namespace
{

// Expected values were computed with rational arithmetic, rounded to single precision after each operation.

using Entries = std::vector<std::pair<std::size_t, float>>;

void ExpectEntries(const LookupTable& table, const Entries& entries)
{
    ASSERT_EQ(table.Samples.size(), LookupSampleCount);
    for (const auto& [entry, value] : entries)
        EXPECT_EQ(table.Samples[entry], value) << "entry " << entry;
}

/// What every generator but the one of the azimuth does behind the values.
void ExpectDifferences(const LookupTable& table, float end)
{
    const std::vector<float>& samples = table.Samples;
    for (std::size_t i = 0; i < 255; ++i)
        EXPECT_NEAR(samples[256 + i], samples[i + 1] - samples[i], 2e-06f) << "entry " << 256 + i;
    EXPECT_EQ(samples[511], end - samples[255]);
}

TEST(LookupTable, ConstantIsTheSinglePrecisionOneOfTheFormat)
{
    EXPECT_EQ(RadiansPerDegreeSingle, 0.017453292f);
}

TEST(LookupTable, Specular)
{
    const struct
    {
        const char* Name;
        float Exponent, Scale;
        Entries Expected;
        float End;
    } cases[] = {
        {"default exponent, small values and differences become 0",
         30.0f,
         1.0f,
         {{0, 0.0f},
          {1, 0.0f},
          {128, 0.0f},
          {161, 0.0f},
          {162, 1.09207247e-06f},
          {200, 0.000607716327f},
          {255, 0.889214337f},
          {256, 0.0f},
          {416, 0.0f},
          {456, 9.80854966e-05f},
          {510, 0.0988769531f},
          {511, 0.110785663f}},
         1.0f},
        {"linear",
         1.0f,
         1.0f,
         {{0, 0.0f},
          {1, 0.00390625f},
          {128, 0.5f},
          {255, 0.99609375f},
          {256, 0.00390625f},
          {510, 0.00390625f},
          {511, 0.00390625f}},
         1.0f},
        {"square",
         2.0f,
         1.0f,
         {{1, 1.52587891e-05f},
          {162, 0.40045166f},
          {255, 0.992202759f},
          {510, 0.00776672363f},
          {511, 0.00779724121f}},
         1.0f},
        {"broken exponent",
         2.5f,
         1.0f,
         {{0, 0.0f},
          {1, 0.0f},
          {64, 0.03125f},
          {100, 0.0953674316f},
          {255, 0.990262985f},
          {356, 0.00240209699f},
          {511, 0.00973701477f}},
         1.0f},
        {"the end is 1 for a scale above it",
         30.0f,
         2.0f,
         {{200, 0.00121543265f}, {255, 1.77842867f}, {511, -0.778428674f}},
         1.0f},
        {"the end is 1 for a scale below it",
         30.0f,
         0.5f,
         {{200, 0.000303858164f}, {255, 0.444607168f}, {511, 0.555392861f}},
         1.0f},
        {"exponent 0 is flat",
         0.0f,
         1.0f,
         {{0, 1.0f}, {1, 1.0f}, {255, 1.0f}, {256, 0.0f}, {511, 0.0f}},
         1.0f},
        {"negative exponent starts at the largest float, whatever the scale",
         -1.0f,
         0.5f,
         {{0, 3.4028235e38f},
          {1, 128.0f},
          {2, 64.0f},
          {128, 1.0f},
          {256, 128.0f - 3.4028235e38f},
          {257, -64.0f}},
         1.0f},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        LookupTable table;
        table.BuildSpecular(c.Exponent, c.Scale);
        ExpectEntries(table, c.Expected);
        ExpectDifferences(table, c.End);
    }
}

TEST(LookupTable, SpecularWithoutANumberHasNone)
{
    LookupTable table;
    table.BuildSpecular(std::numeric_limits<float>::quiet_NaN(), 1.0f);
    ASSERT_EQ(table.Samples.size(), LookupSampleCount);
    EXPECT_TRUE(std::isnan(table.Samples[1]));
}

TEST(LookupTable, AnisotropicZenith)
{
    const struct
    {
        const char* Name;
        float Roughness;
        Entries Expected;
        float End;
    } cases[] = {
        {"as materials use it",
         0.5f,
         {{0, 0.25f},
          {1, 0.250003815f},
          {100, 0.293003261f},
          {128, 0.326530606f},
          {200, 0.517833471f},
          {255, 0.98458606f},
          {256, 3.81469727e-06f},
          {356, 0.000975281f},
          {510, 0.0150020719f},
          {511, 0.01541394f}},
         1.0f},
        {"end computed from the rounded formula",
         0.05f,
         {{0, 0.00250000018f},
          {100, 0.00341952406f},
          {255, 0.758585632f},
          {256, 0.0f},
          {356, 2.34241597e-05f},
          {511, 0.241414011f}},
         0.999999642f},
        {"full roughness is flat", 1.0f, {{0, 1.0f}, {255, 1.0f}, {256, 0.0f}, {511, 0.0f}}, 1.0f},
        {"the singular end of a mirror",
         0.0f,
         {{0, 0.0f}, {255, 0.0f}, {510, 0.0f}, {511, 1000.0f}},
         1000.0f},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        LookupTable table;
        table.BuildAnisotropicZenith(c.Roughness);
        ExpectEntries(table, c.Expected);
        ExpectDifferences(table, c.End);
    }
}

TEST(LookupTable, AnisotropicAzimuth)
{
    const struct
    {
        const char* Name;
        float Roughness;
        Entries Expected;
    } cases[] = {
        {"as materials use it",
         0.05f,
         {{0, 0.0503927059f},
          {1, 0.0503927059f},
          {64, 0.0996270999f},
          {127, 0.988041401f},
          {128, 1.0f},
          {129, 0.988041401f},
          {192, 0.0996270999f},
          {255, 0.0503927059f},
          {256, 0.0f},
          {382, 0.0334552526f},
          {383, -0.938041389f},
          {384, -0.0119585991f},
          {510, -0.000398915261f},
          {511, 0.0f}}},
        {"rougher",
         0.5f,
         {{0, 0.502944052f},
          {1, 0.502944052f},
          {64, 0.755928934f},
          {127, 0.999908447f},
          {128, 1.0f},
          {255, 0.502944052f},
          {382, 0.000274479389f},
          {383, -0.499908447f},
          {384, -9.15527344e-05f},
          {510, -0.00297296047f},
          {511, 0.0f}}},
        {"full roughness is flat", 1.0f, {{0, 1.0f}, {128, 1.0f}, {255, 1.0f}, {256, 0.0f}, {383, 0.0f}}},
        {"the singular middle of a mirror",
         0.0f,
         {{0, 0.0f},
          {127, 0.0f},
          {128, 1000.0f},
          {129, 0.0f},
          {382, 0.0f},
          {383, 0.0f},
          {384, -1000.0f},
          {511, 0.0f}}},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        LookupTable table;
        table.BuildAnisotropicAzimuth(c.Roughness);
        ExpectEntries(table, c.Expected);
        for (std::size_t i = 1; i < 128; ++i)
            EXPECT_EQ(table.Samples[128 - i], table.Samples[128 + i]) << "distance " << i;
    }
}

TEST(LookupTable, AzimuthDifferencesStandInTwoHalves)
{
    LookupTable table;
    table.BuildAnisotropicAzimuth(0.05f);
    const std::vector<float>& samples = table.Samples;
    for (std::size_t i = 0; i < 127; ++i)
        EXPECT_EQ(samples[256 + i], samples[i + 1] - samples[i]) << "entry " << 256 + i;
    for (std::size_t i = 128; i < 255; ++i)
        EXPECT_EQ(samples[256 + i], samples[i + 1] - samples[i]) << "entry " << 256 + i;
    EXPECT_EQ(samples[383], 0.05f - samples[127]) << "not the step into the middle";
}

TEST(LookupTable, SpotRange)
{
    const struct
    {
        const char* Name;
        float Inner, Outer;
        int High, Low; ///< 0 below `Low`, 1 from `High`
    } cases[] = {
        {"narrow cone", 10.0f, 20.0f, 252, 240},
        {"broken angle", 5.0f, 22.5f, 255, 236},
        {"wide ramp", 0.0f, 90.0f, 256, 0},
        {"float constant puts 60 degrees below 128", 60.0f, 60.0f, 127, 127},
        {"equal angles make a step", 30.0f, 30.0f, 221, 221},
        {"the cosine is cut before it is narrowed", 0.01f, 20.0f, 255, 240},
        {"no cone at all", 0.0f, 0.0f, 256, 256},
        {"outer angle behind the light", 0.0f, 120.0f, 256, -128},
        {"exchanged angles: 0 wins below the higher entry", 20.0f, 10.0f, 240, 252},
        {"angle that is not a number", std::numeric_limits<float>::quiet_NaN(), 120.0f, 0, -128},
        {"endless angle", std::numeric_limits<float>::infinity(), 0.0f, 0, 256},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        LookupTable table;
        table.BuildSpotRange(c.Inner, c.Outer);
        ASSERT_EQ(table.Samples.size(), LookupSampleCount);
        const auto valueOf = [&](int i) {
            if (i < c.Low)
                return 0.0f;
            return i >= c.High ? 1.0f : static_cast<float>(i - c.Low) / static_cast<float>(c.High - c.Low);
        };
        for (int i = 0; i < 256; ++i)
            EXPECT_EQ(table.Samples[static_cast<std::size_t>(i)], valueOf(i)) << "entry " << i;
        ExpectDifferences(table, valueOf(256));
    }
}

TEST(LookupTable, SpotRampByHand)
{
    LookupTable table;
    table.BuildSpotRange(10.0f, 20.0f); // entries 240 to 252
    ExpectEntries(table, {{239, 0.0f},
                          {240, 0.0f},
                          {243, 0.25f},
                          {246, 0.5f},
                          {251, 11.0f / 12.0f},
                          {252, 1.0f},
                          {255, 1.0f},
                          {256 + 239, 0.0f},
                          {256 + 252, 0.0f},
                          {511, 0.0f}});
}

TEST(LookupTable, GeneratorsReplaceSamplesAlone)
{
    LookupTable table;
    table.Name = "Lamp";
    table.IsGeneratedAsAbs = true;
    table.IsSizeDoubled = true;
    table.Samples.assign(600, 7.0f);
    table.BuildSpotRange(10.0f, 20.0f);
    EXPECT_EQ(table.Name, "Lamp");
    EXPECT_TRUE(table.IsGeneratedAsAbs);
    EXPECT_TRUE(table.IsSizeDoubled);
    EXPECT_FALSE(table.IsMipMap);
    EXPECT_EQ(table.Samples.size(), LookupSampleCount);
}

TEST(LookupTable, NoSampleIsNegligible)
{
    LookupTable table;
    table.BuildSpecular(30.0f, 1.0f);
    for (const float sample : table.Samples)
        EXPECT_TRUE(sample == 0.0f || !IsNegligible(sample)) << sample;
}

} // namespace
} // namespace tq4x
