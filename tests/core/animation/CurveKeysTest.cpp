#include "animation/BuildCurveKeys.h"

#include <cmath>
#include <limits>

namespace tq4x
{
namespace
{

AnimationCurve MakeCurve(std::vector<float> samples, float tolerance, bool isAngle = false)
{
    AnimationCurve curve;
    curve.Samples = std::move(samples);
    curve.Tolerance = tolerance;
    curve.IsAngle = isAngle;
    return curve;
}

CurveKey Key(float frame, float value, float slope = 0.0f)
{
    return {.Frame = frame, .Value = value, .InSlope = slope, .OutSlope = slope};
}

TEST(IsConstantCheck, MeasuresFromTheFirstSample)
{
    const struct
    {
        const char* Name;
        std::vector<float> Samples;
        float Tolerance;
        bool IsConstant;
    } cases[] = {
        {"empty", {}, 0.01f, true},
        {"one sample", {7}, 0, true},
        {"inside", {5, 5.25f, 4.75f}, 0.5f, true},
        {"exactly the tolerance", {5, 5.5f}, 0.5f, false},
        {"outside below", {5, 4}, 0.5f, false},
        {"a range above the tolerance, each near the first", {5, 5.4f, 4.6f}, 0.5f, true},
        {"equal samples without tolerance", {5, 5, 5}, 0, true},
        {"any difference without tolerance", {5, 5, std::nextafter(5.0f, 6.0f)}, 0, false},
        {"zeros of both signs", {0.0f, -0.0f}, 0, true},
        {"not a number", {5, std::numeric_limits<float>::quiet_NaN(), 5}, 0.5f, true},
    };

    for (const auto& c : cases) {
        AnimationCurve curve = MakeCurve(c.Samples, c.Tolerance);
        curve.IsConstant = !c.IsConstant;
        IsConstantCheck(curve);
        EXPECT_EQ(curve.IsConstant, c.IsConstant) << c.Name;
    }
}

TEST(UpdateNeedsOutput, AsksWhatMovesOrRestsElsewhere)
{
    const struct
    {
        const char* Name;
        std::vector<float> Samples;
        float Default;
        bool IsAngle;
        bool NeedsOutput;
    } cases[] = {
        {"no samples", {}, 5, false, false},
        {"at the default", {5, 5}, 5, false, false},
        {"a rounding beside the default", {0.5f, 0.5f}, 0.5f + 6e-7f, false, false},
        {"beside the default", {5, 5}, 5.1f, false, true},
        {"exactly the limit beside the default", {1e-6f}, 0, false, true},
        {"default snapped to zero", {0}, 9e-7f, false, false},
        {"sample and snapped default", {-9e-7f}, 9e-7f, false, false},
        {"sample that a snapped default leaves alone", {1.5e-6f}, 9e-7f, false, true},
        {"angle at the default", {90}, 90, true, false},
        {"angle a turn from the default", {450}, 90, true, false},
        {"angle beside the default", {91}, 90, true, true},
        {"a turn that is no angle", {450}, 90, false, true},
        {"moves away from the default", {5, 6}, 5, false, true},
        {"an angle that moves by a turn", {90, 450}, 90, true, true},
    };

    for (const auto& c : cases) {
        AnimationCurve curve = MakeCurve(c.Samples, 0.01f, c.IsAngle);
        IsConstantCheck(curve);
        curve.NeedsOutput = !c.NeedsOutput;
        UpdateNeedsOutput(curve, c.Default);
        EXPECT_EQ(curve.NeedsOutput, c.NeedsOutput) << c.Name;
    }
}

TEST(BuildCurveKeys, UnwrapsAndRecentresACopyOfAngles)
{
    const struct
    {
        const char* Name;
        std::vector<float> Samples;
        bool IsAngle;
        bool Unwrap;
        std::vector<CurveKey> Keys;
    } cases[] = {
        {"plain values stay", {720, 730}, false, true, {Key(0, 720, 10), Key(1, 730, 10)}},
        {"unwrapped",
         {170, 179, -179, -170},
         true,
         true,
         {Key(0, 170, 9), Key(1, 179, 5.5f), Key(2, 181, 5.5f), Key(3, 190, 9)}},
        {"not unwrapped", {0, 200}, true, false, {Key(0, 0, 200), Key(1, 200, 200)}},
        {"recentred without unwrapping", {720, 730}, true, false, {Key(0, 0, 10), Key(1, 10, 10)}},
        {"unwrapped, then recentred", {1090, 1070}, true, true, {Key(0, 10, -20), Key(1, -10, -20)}},
        {"no samples", {}, true, true, {}},
    };

    for (const auto& c : cases) {
        AnimationCurve curve = MakeCurve(c.Samples, 0.01f, c.IsAngle);
        BuildCurveKeys(curve, c.Unwrap, 1);
        EXPECT_EQ(curve.Keys, c.Keys) << c.Name;
        EXPECT_EQ(curve.Samples, c.Samples) << c.Name << ": samples stay as sampled";
    }
}

TEST(BuildCurveKeys, KeysStandAtPartsOfFrames)
{
    AnimationCurve curve = MakeCurve({0, 1, 4, 9}, 0);
    BuildCurveKeys(curve, false, 2);
    ASSERT_EQ(curve.Keys.size(), 4u);
    EXPECT_EQ(curve.Keys[3].Frame, 1.5f);
}

TEST(BuildCurveKeys, KeepsWithinTheCurvesTolerance)
{
    AnimationCurve curve = MakeCurve({0, 0.4f, 0, 0.4f, 0}, 0.5f);
    BuildCurveKeys(curve, false, 1);
    EXPECT_EQ(curve.Keys.size(), 2u);
    curve.Tolerance = 0.1f;
    BuildCurveKeys(curve, false, 1);
    EXPECT_GT(curve.Keys.size(), 2u);
}

/// Loops show in the file's attributes only.
TEST(BuildCurveKeys, ALoopHasNoInfluence)
{
    AnimationCurve once = MakeCurve({0, 3, 1, 0}, 0.01f);
    AnimationCurve loop = once;
    loop.IsLoop = true;
    BuildCurveKeys(once, true, 1);
    BuildCurveKeys(loop, true, 1);
    EXPECT_EQ(once.Keys, loop.Keys);
    EXPECT_EQ(loop.PostRepeatMethod, RepeatMethod::None);
}

TEST(BuildStepKeys, MarksTheChanges)
{
    const struct
    {
        const char* Name;
        std::vector<float> Samples;
        float Tolerance;
        std::vector<CurveKey> Keys;
    } cases[] = {
        {"no samples", {}, 0, {}},
        {"constant", {1, 1, 1}, 0, {Key(0, 1)}},
        {"on and off", {1, 1, 0, 0, 1}, 0, {Key(0, 1), Key(1, 0), Key(2, 1)}},
        {"measured from the last key", {0, 0.25f, 0.5f, 0.75f}, 0.5f, {Key(0, 0), Key(1, 0.5f)}},
        {"exactly the tolerance is a change", {0, 0.5f}, 0.5f, {Key(0, 0), Key(0.5f, 0.5f)}},
        {"not a number is no change",
         {1, std::numeric_limits<float>::quiet_NaN(), 0},
         0,
         {Key(0, 1), Key(1, 0)}},
    };

    for (const auto& c : cases) {
        AnimationCurve curve = MakeCurve(c.Samples, c.Tolerance);
        curve.Keys.push_back(Key(9, 9));
        BuildStepKeys(curve, 2);
        EXPECT_EQ(curve.Keys, c.Keys) << c.Name;
    }
}

} // namespace
} // namespace tq4x
