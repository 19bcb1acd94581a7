#include "scene/ExtractChannels.h"
#include "support/NodeScene.h"

#include <cmath>
#include <limits>

namespace tq4x
{
namespace
{

using namespace test;

constexpr ChannelSettings Settings{.Tolerances = {.Scale = 0.5f, .Rotate = 0.25f, .Translate = 0.125f}};

/// A node with one sample for each transform.
Bone& Sample(Bone& bone, const std::vector<TransformParts>& transforms)
{
    for (std::size_t i = 0; i < transforms.size(); ++i)
        SetSample(bone, static_cast<std::int32_t>(i), ComposeMatrix(transforms[i]));
    return bone;
}

/// Number of keys of the nine channels, "sss rrr ttt".
std::string KeyCounts(const Bone& bone)
{
    std::string counts;
    for (const auto* curves : {&bone.ScaleCurves, &bone.RotateCurves, &bone.TranslateCurves}) {
        counts += counts.empty() ? "" : " ";
        for (const AnimationCurve& curve : *curves)
            counts += std::to_string(curve.Keys.size());
    }
    return counts;
}

TransformParts Moved(float x)
{
    return {{1, 1, 1}, {}, {x, 0, 0}};
}

TEST(ExtractChannels, FillsTheNineLists)
{
    Bone bone;
    Sample(bone, {{{1, 2, 3}, {10, 20, 30}, {4, 5, 6}}, {{2, 2, 3}, {10, 40, 30}, {4, 5, 9}}});
    const Matrix44 first = bone.TransformSamples.front();
    ExtractChannels(bone, Settings);
    const auto expectSamples = [](const AnimationCurve& curve, float a, float b, const char* name) {
        ASSERT_EQ(curve.Samples.size(), 2u) << name;
        EXPECT_NEAR(curve.Samples[0], a, 1e-4f) << name;
        EXPECT_NEAR(curve.Samples[1], b, 1e-4f) << name;
    };
    expectSamples(bone.ScaleCurves[0], 1, 2, "sx");
    expectSamples(bone.ScaleCurves[1], 2, 2, "sy");
    expectSamples(bone.ScaleCurves[2], 3, 3, "sz");
    expectSamples(bone.RotateCurves[0], 10, 10, "rx");
    expectSamples(bone.RotateCurves[1], 20, 40, "ry");
    expectSamples(bone.RotateCurves[2], 30, 30, "rz");
    expectSamples(bone.TranslateCurves[0], 4, 4, "tx");
    expectSamples(bone.TranslateCurves[1], 5, 5, "ty");
    expectSamples(bone.TranslateCurves[2], 6, 9, "tz");
    EXPECT_EQ(KeyCounts(bone), "200 020 002");
    EXPECT_EQ(bone.TransformSamples, (std::vector<Matrix44>{first}));
    EXPECT_EQ(bone.Scale.X, bone.ScaleCurves[0].Samples[0]);
    EXPECT_EQ(bone.Rotate.Y, bone.RotateCurves[1].Samples[0]);
    EXPECT_EQ(bone.Translate, (Vector3{4, 5, 6}));
}

TEST(ExtractChannels, AChannelMovesByMoreThanItsTolerance)
{
    const struct
    {
        const char* Name;
        std::vector<float> Values;
        bool Moves;
    } cases[] = {
        {"one sample", {5}, false},
        {"rests", {5, 5, 5}, false},
        {"exactly its tolerance", {0, 0.125f, 0}, false},
        {"just more", {0, 0.1251f, 0}, true},
        {"up and down around the first: the range counts", {0, 0.1f, -0.1f}, true},
        {"not a number", {0, std::numeric_limits<float>::quiet_NaN(), 0}, false},
        {"not a number first", {std::numeric_limits<float>::quiet_NaN(), 0, 1}, true},
    };

    for (const auto& c : cases) {
        Bone bone;
        std::vector<TransformParts> transforms;
        for (const float value : c.Values)
            transforms.push_back(Moved(value));
        ExtractChannels(Sample(bone, transforms), Settings);
        EXPECT_EQ(!bone.TranslateCurves[0].Keys.empty(), c.Moves) << c.Name;
        EXPECT_EQ(bone.TranslateCurves[0].IsConstant, !c.Moves) << c.Name;
        EXPECT_TRUE(bone.TranslateCurves[1].IsConstant) << c.Name;
    }
}

TEST(ExtractChannels, EachGroupHasItsTolerance)
{
    const TransformParts rest;
    const TransformParts near{{1.4f, 1, 1}, {0.24f, 0, 0}, {0.12f, 0, 0}};
    const TransformParts far{{1.6f, 1, 1}, {0.26f, 0, 0}, {0.13f, 0, 0}};
    Bone bone;
    ExtractChannels(Sample(bone, {rest, near}), Settings);
    EXPECT_EQ(KeyCounts(bone), "000 000 000");
    Bone moving;
    ExtractChannels(Sample(moving, {rest, far}), Settings);
    EXPECT_EQ(KeyCounts(moving), "200 200 200");
}

TEST(ExtractChannels, TolerancesAreAHundredthBeforeTheFirstExport)
{
    Bone bone;
    ExtractChannels(Sample(bone, {Moved(0), Moved(0.009f)}), {});
    EXPECT_EQ(KeyCounts(bone), "000 000 000");
    Bone moving;
    ExtractChannels(Sample(moving, {Moved(0), Moved(0.011f)}), {});
    EXPECT_EQ(KeyCounts(moving), "000 000 200");
}

TEST(ExtractChannels, WithoutSamplesNothingIsTouched)
{
    Bone bone;
    bone.Translate = {1, 2, 3};
    bone.ScaleCurves[0].Samples = {7};
    ExtractChannels(bone, Settings);
    EXPECT_EQ(bone.Translate, (Vector3{1, 2, 3}));
    EXPECT_EQ(bone.ScaleCurves[0].Samples, (std::vector<float>{7}));
    EXPECT_TRUE(bone.TransformSamples.empty());
}

TEST(ExtractChannels, EmptiesWhatWasThere)
{
    Bone bone;
    bone.TranslateCurves[0].Samples = {7, 8, 9};
    bone.TranslateCurves[0].Keys.resize(5);
    ExtractChannels(Sample(bone, {Moved(1)}), Settings);
    EXPECT_EQ(bone.TranslateCurves[0].Samples, (std::vector<float>{1}));
    EXPECT_EQ(KeyCounts(bone), "000 000 000");
}

TEST(ExtractChannels, KeysStandAtPartsOfFrames)
{
    Bone bone;
    ChannelSettings settings = Settings;
    settings.FrameSteps = 2;
    ExtractChannels(Sample(bone, {Moved(0), Moved(1), Moved(2), Moved(3)}), settings);
    const std::vector<CurveKey>& keys = bone.TranslateCurves[0].Keys;
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[1].Frame, 1.5f);
    EXPECT_EQ(keys[1].InSlope, 2.0f);
}

TEST(ExtractChannels, RotationsRunOnWithoutJumps)
{
    Bone bone;
    std::vector<TransformParts> transforms;
    for (int i = 0; i < 40; ++i)
        transforms.push_back({{1, 1, 1}, {0, 0, 30.0f * static_cast<float>(i)}, {}});
    ExtractChannels(Sample(bone, transforms), Settings);
    const std::vector<float>& samples = bone.RotateCurves[2].Samples;
    for (std::size_t i = 0; i < samples.size(); ++i)
        EXPECT_NEAR(samples[i], 30.0f * static_cast<float>(i), 1e-2f) << i;
    EXPECT_EQ(bone.RotateCurves[2].Keys.size(), 2u) << "straight after filtering, and not recentred";
    EXPECT_EQ(KeyCounts(bone), "000 002 000");
}

TEST(ExtractChannels, AMirrorBecomesANegativeZScale)
{
    for (const Vector3& scale : {Vector3{-1, 1, 1}, Vector3{1, -1, 1}, Vector3{1, 1, -1}}) {
        Bone bone;
        ExtractChannels(Sample(bone, {{scale, {}, {}}}), Settings);
        EXPECT_GT(bone.Scale.X, 0.0f);
        EXPECT_GT(bone.Scale.Y, 0.0f);
        EXPECT_LT(bone.Scale.Z, 0.0f);
    }
}

} // namespace
} // namespace tq4x
