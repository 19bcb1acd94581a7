#include "animation/BuildHermiteKeys.h"

#include <cmath>
#include <limits>

namespace tq4x
{
namespace
{

std::vector<CurveKey> Build(const std::vector<float>& samples, float tolerance, int frameSteps = 1)
{
    std::vector<CurveKey> keys{{.Frame = 99.0f}}; // what was there before goes
    BuildHermiteKeys(keys, samples, SampleFrames(samples.size(), frameSteps), tolerance);
    return keys;
}

CurveKey Key(float frame, float value, float slope)
{
    return {.Frame = frame, .Value = value, .InSlope = slope, .OutSlope = slope};
}

/// Frames of the keys, for cases where nothing else is of interest.
std::vector<float> FramesOf(const std::vector<CurveKey>& keys)
{
    std::vector<float> frames;
    for (const CurveKey& key : keys)
        frames.push_back(key.Frame);
    return frames;
}

TEST(SampleFrames, DividesByTheSteps)
{
    EXPECT_EQ(SampleFrames(4, 1), (std::vector<float>{0, 1, 2, 3}));
    EXPECT_EQ(SampleFrames(4, 2), (std::vector<float>{0, 0.5f, 1, 1.5f}));
    EXPECT_EQ(SampleFrames(4, 3)[2], 2.0f / 3.0f);
    EXPECT_TRUE(SampleFrames(0, 10).empty());
}

TEST(BuildHermiteKeys, GivesTheKeysOfShortLists)
{
    const struct
    {
        const char* Name;
        std::vector<float> Samples;
        float Tolerance;
        std::vector<CurveKey> Keys;
    } cases[] = {
        {"empty", {}, 0.01f, {}},
        {"one sample", {5}, 0.01f, {Key(0, 5, 0)}},
        {"one infinite sample", {INFINITY}, 0.01f, {Key(0, INFINITY, 0)}},
        {"two samples", {1, 4}, 0.01f, {Key(0, 1, 3), Key(1, 4, 3)}},
        {"two equal samples stay two", {5, 5}, 0.01f, {Key(0, 5, 0), Key(1, 5, 0)}},
        {"straight line", {0, 1, 2, 3}, 0.01f, {Key(0, 0, 1), Key(3, 3, 1)}},
        {"flat", {5, 5, 5}, 0.01f, {Key(0, 5, 0)}},
        {"flat at zero without tolerance", {0, 0, 0}, 0, {Key(0, 0, 0)}},
        // The middle of the rise lies on the segment between its ends.
        {"ramp between rests",
         {0, 0, 0, 1, 2, 2, 2},
         0.01f,
         {Key(0, 0, 0), Key(1, 0, 0), Key(2, 0, 0.5f), Key(4, 2, 0.5f), Key(5, 2, 0), Key(6, 2, 0)}},
    };

    for (const auto& c : cases)
        EXPECT_EQ(Build(c.Samples, c.Tolerance), c.Keys) << c.Name;
}

TEST(BuildHermiteKeys, SlopesAreCentralDifferencesOfAllSamples)
{
    // Tolerance below everything, so that all keys are left. Halved frames double the slopes.
    const std::vector<CurveKey> keys = Build({0, 1, 5, 2}, 0, 2);
    EXPECT_EQ(keys, (std::vector<CurveKey>{Key(0, 0, 2), Key(0.5f, 1, 5), Key(1, 5, 1), Key(1.5f, 2, -6)}));
}

TEST(BuildHermiteKeys, KeptKeysKeepTheirSlopes)
{
    // The key in the middle takes its slope from neighbours that are dropped.
    std::vector<float> samples;
    for (int i = 0; i <= 20; ++i)
        samples.push_back(static_cast<float>(i <= 10 ? i : 20 - i));
    const std::vector<CurveKey> keys = Build(samples, 0.01f);
    ASSERT_EQ(keys.size(), 5u);
    EXPECT_EQ(keys[2], Key(10, 10, 0));
    EXPECT_EQ(FramesOf(keys), (std::vector<float>{0, 9, 10, 11, 20}));
}

TEST(BuildHermiteKeys, ClampsSlopes)
{
    const struct
    {
        const char* Name;
        float Step;
        float Slope;
    } cases[] = {
        {"inside", 32766, 32766},         {"upper limit", 32767, 32767},   {"above", 40000, 32767},
        {"inside below", -32767, -32767}, {"lower limit", -32768, -32768}, {"below", -40000, -32768},
    };

    for (const auto& c : cases) {
        const std::vector<CurveKey> keys = Build({0, c.Step}, 0.01f);
        EXPECT_EQ(keys[0].OutSlope, c.Slope) << c.Name;
        EXPECT_EQ(keys[1].InSlope, c.Slope) << c.Name;
    }
}

TEST(BuildHermiteKeys, KeysAtOneFrameHaveUndividedSlopes)
{
    std::vector<CurveKey> keys;
    const std::vector<float> samples{1, 4};
    BuildHermiteKeys(keys, samples, std::vector<float>{2, 2}, 0.01f);
    EXPECT_EQ(keys, (std::vector<CurveKey>{Key(2, 1, 3), Key(2, 4, 3)}));
}

TEST(BuildHermiteKeys, SnapsSmallNumbersToZero)
{
    std::vector<CurveKey> keys;
    const std::vector<float> samples{9e-7f, 9e-7f + 1e-6f};
    BuildHermiteKeys(keys, samples, std::vector<float>{1e-7f, 4.0f}, 0.01f);
    EXPECT_EQ(keys[0], Key(0, 0, 0));
    EXPECT_EQ(keys[1].Value, 9e-7f + 1e-6f);
    // Exactly the limit stays.
    BuildHermiteKeys(keys, std::vector<float>{1e-6f}, std::vector<float>{-1e-6f}, 0.01f);
    EXPECT_EQ(keys[0], Key(-1e-6f, 1e-6f, 0));
}

TEST(BuildHermiteKeys, SlopesSeeTheKeyBeforeSnappedAndTheKeyBehindAsSampled)
{
    const float small = 9e-7f;
    std::vector<CurveKey> keys;
    BuildHermiteKeys(keys, std::vector<float>{small, 5.0f, small}, std::vector<float>{0, 0.001f, 0.002f}, 0);
    ASSERT_EQ(keys.size(), 3u);
    EXPECT_EQ(keys[0].OutSlope, (5.0f - small) / 0.001f);
    EXPECT_EQ(keys[1].OutSlope, small / 0.002f) << "the first value was 0 by then";
    EXPECT_EQ(keys[2].InSlope, (small - 5.0f) / (0.002f - 0.001f));
}

TEST(BuildHermiteKeys, ErrorsAreMeasuredAgainstSamples)
{
    // All keys are snapped to 0, all samples lie 9e-7 off: more than the tolerance.
    EXPECT_EQ(Build({9e-7f, 9e-7f, 9e-7f, 9e-7f}, 5e-7f).size(), 4u);
    EXPECT_EQ(Build({9e-7f, 9e-7f, 9e-7f, 9e-7f}, 1e-6f).size(), 1u);
}

TEST(BuildHermiteKeys, ToleranceItselfIsAnError)
{
    // The middle sample lies exactly 1 off the level segment.
    const auto build = [](float tolerance) { return Build({0, 0, 0, 1, 0, 0, 0}, tolerance).size(); };
    EXPECT_EQ(build(1.5f), 1u);
    EXPECT_GT(build(1.0f), 2u);
}

TEST(BuildHermiteKeys, WithoutToleranceAKeyGoesOnlyWhereTheCurveMeetsItExactly)
{
    EXPECT_EQ(FramesOf(Build({0, 1, 2}, 0)), (std::vector<float>{0, 2}));
    EXPECT_EQ(FramesOf(Build({0, std::nextafter(1.0f, 2.0f), 2}, 0)), (std::vector<float>{0, 1, 2}));
    // A third has no exact float: the curve misses the straight line by a rounding.
    EXPECT_EQ(FramesOf(Build({0, 1, 2, 3, 4}, 0)), (std::vector<float>{0, 2, 4}));
}

TEST(BuildHermiteKeys, FlatPairsAreJudgedBySignedSlopes)
{
    // A valley that leaves steeply downwards and comes back: the values agree and the first slope is far
    // below the limit. A hill does not pass.
    const std::vector<float> valley{0, -3, -4, -3, 0};
    std::vector<float> hill;
    for (const float sample : valley)
        hill.push_back(-sample);
    EXPECT_EQ(Build(valley, 100).size(), 2u) << "it arrives with a positive slope";
    EXPECT_EQ(Build(hill, 100).size(), 2u);
    const std::vector<float> falling{0, -3, 3, 0};
    EXPECT_EQ(Build(falling, 100).size(), 1u) << "leaves and arrives falling";
    const std::vector<float> rising{0, 3, -3, 0};
    EXPECT_EQ(Build(rising, 100).size(), 2u);
    EXPECT_EQ(Build({0, -3}, 100).size(), 2u) << "no reduction, no cut";
}

TEST(BuildHermiteKeys, BlockBordersAreForcedAndTestedAgain)
{
    const auto ramp = [](std::size_t count) {
        std::vector<float> samples(count);
        for (std::size_t i = 0; i < count; ++i)
            samples[i] = static_cast<float>(i);
        return samples;
    };
    for (const std::size_t count : {1024u, 1025u, 1026u, 2049u, 2050u, 5000u})
        EXPECT_EQ(FramesOf(Build(ramp(count), 0.01f)), (std::vector<float>{0, static_cast<float>(count - 1)}))
            << count;
}

TEST(BuildHermiteKeys, ABorderStaysWhereTheCurveNeedsIt)
{
    // Two parabolas that meet with one slope and opposite bends: each is a segment, both together are not.
    constexpr float bend = 2e-5f;
    std::vector<float> samples;
    for (int i = 0; i <= 1024; ++i)
        samples.push_back(bend * static_cast<float>(i * i));
    for (int i = 1023; i >= 0; --i)
        samples.push_back(2.0f * samples[1024] - samples[static_cast<std::size_t>(i)]);
    const std::vector<float> frames = FramesOf(Build(samples, 0.01f));
    EXPECT_EQ(frames, (std::vector<float>{0, 1024, 2048}));
}

TEST(BuildHermiteKeys, TakesFramesFromAFunction)
{
    const auto frameOf = [](std::size_t i) { return (static_cast<float>(i) - 127.0f) / 127.0f * 255.0f; };
    std::vector<CurveKey> keys;
    BuildHermiteKeys(keys, std::vector<float>{0, 1, 2, 3}, frameOf, 0.001f);
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[0], Key(-255, 0, 1.0f / (frameOf(1) - frameOf(0))));
    EXPECT_EQ(keys[1], Key(frameOf(3), 3, 1.0f / (frameOf(3) - frameOf(2))));
}

TEST(BuildHermiteKeys, SamplesThatAreNotNumbersEndIt)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const std::vector<float> samples{0, nan, nan, 1, INFINITY, -INFINITY, 2, nan};
    for (const float tolerance : {0.0f, 0.01f, nan, INFINITY, -1.0f}) {
        const std::vector<CurveKey> keys = Build(samples, tolerance);
        ASSERT_GE(keys.size(), 2u) << tolerance;
        EXPECT_EQ(keys.front().Frame, 0.0f) << tolerance;
        EXPECT_EQ(keys.back().Frame, 7.0f) << tolerance;
    }
}

} // namespace
} // namespace tq4x
