#include "environment/FinishLights.h"
#include "core/environment/Stage.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tq4x
{
namespace
{

using test::MakeLight;
using test::Sample;
using test::Samples;

constexpr NodeTolerances Tolerances{.Scale = 0.02f, .Rotate = 0.03f, .Translate = 0.04f};
constexpr float ColorTolerance = 0.05f;

void Finish(Light& light, int frameSteps = 1)
{
    FinishLight(light, false, Tolerances, ColorTolerance, frameSteps);
}

struct ChannelCase
{
    const char* Name;
    float Tolerance;
};

constexpr ChannelCase Channels[] = {
    {"visibility", 0.01f}, {"sx", 0.02f},  {"sy", 0.02f},  {"sz", 0.02f},  {"rx", 0.03f},  {"ry", 0.03f},
    {"rz", 0.03f},         {"tx", 0.04f},  {"ty", 0.04f},  {"tz", 0.04f},  {"ar", 0.05f},  {"ag", 0.05f},
    {"ab", 0.05f},         {"aa", 0.05f},  {"dr", 0.05f},  {"dg", 0.05f},  {"db", 0.05f},  {"da", 0.05f},
    {"s0r", 0.05f},        {"s0g", 0.05f}, {"s0b", 0.05f}, {"s0a", 0.05f}, {"s1r", 0.05f}, {"s1g", 0.05f},
    {"s1b", 0.05f},        {"s1a", 0.05f}, {"dx", 0.001f}, {"dy", 0.001f}, {"dz", 0.001f},
};

TEST(FinishLight, NamesItsCurvesAndSetsTheirTolerances)
{
    Light light = MakeLight("sun", LightKind::DirectionalLight);
    FinishLight(light, true, Tolerances, ColorTolerance, 1);
    ASSERT_EQ(std::size(Channels), light.Curves.size());
    for (std::size_t i = 0; i < light.Curves.size(); ++i) {
        const AnimationCurve& curve = light.Curves[i];
        EXPECT_EQ(curve.Name, std::string("sun.") + Channels[i].Name);
        EXPECT_EQ(curve.IsAngle, i >= 4 && i <= 6) << curve.Name;
        EXPECT_EQ(curve.Tolerance, Channels[i].Tolerance) << curve.Name;
        EXPECT_TRUE(curve.IsLoop) << curve.Name;
        EXPECT_FALSE(curve.NeedsOutput) << curve.Name;
    }
    EXPECT_FALSE(HasAnimation(light));
}

/// The static values in the order of the curves; that of the visibility stands apart.
std::vector<float*> StaticValues(Light& light)
{
    std::vector<float*> values = {nullptr};
    for (Vector3* vector : {&light.Scale, &light.Rotate, &light.Translate})
        for (float* component : {&vector->X, &vector->Y, &vector->Z})
            values.push_back(component);
    for (Color* color : {&light.Ambient, &light.Diffuse, &light.Specular0, &light.Specular1})
        for (float* component : {&color->R, &color->G, &color->B, &color->A})
            values.push_back(component);
    for (float* component : {&light.Direction.X, &light.Direction.Y, &light.Direction.Z})
        values.push_back(component);
    return values;
}

TEST(FinishLight, ComparesEachCurveWithItsStaticValue)
{
    for (std::size_t i = 1; i < LightCurve::Count; ++i) {
        Light light;
        const std::vector<float*> values = StaticValues(light);
        for (std::size_t k = 1; k < values.size(); ++k)
            *values[k] = k == i ? 3.0f : 7.0f;
        for (AnimationCurve& curve : light.Curves)
            curve.Samples = {3.0f, 3.0f};
        Finish(light);
        for (std::size_t k = 1; k < LightCurve::Count; ++k)
            EXPECT_EQ(light.Curves[k].NeedsOutput, k != i) << i << " " << k;
    }
}

TEST(FinishLight, ComparesVisibilityWithTheFirstFrame)
{
    for (const bool isEnabled : {true, false}) {
        for (const float sample : {0.0f, 1.0f}) {
            Light light;
            light.IsLightEnabled = isEnabled;
            Sample(light, LightCurve::Visibility, {sample, sample});
            Finish(light);
            EXPECT_EQ(light.Curves[LightCurve::Visibility].NeedsOutput, (sample != 0.0f) != isEnabled);
            EXPECT_EQ(HasAnimation(light), (sample != 0.0f) != isEnabled);
        }
    }
}

constexpr bool Light::*Flags[] = {
    &Light::IsScaleAnimated,     &Light::IsRotateAnimated,    &Light::IsTranslateAnimated,
    &Light::IsAmbientAnimated,   &Light::IsDiffuseAnimated,   &Light::IsSpecular0Animated,
    &Light::IsSpecular1Animated, &Light::IsDirectionAnimated,
};

/// Group of each curve but the visibility's.
std::size_t GroupOf(std::size_t curve)
{
    if (curve < LightCurve::Ambient)
        return (curve - 1) / 3;
    return curve < LightCurve::Direction ? 3 + (curve - LightCurve::Ambient) / 4 : 7;
}

TEST(FinishLight, RaisesTheFlagOfWhatMovesAndBuildsItsKeys)
{
    for (std::size_t i = 1; i < LightCurve::Count; ++i) {
        Light light;
        const Samples still(3, 0.0f);
        for (std::size_t k = LightCurve::Rotate; k < LightCurve::Translate; ++k)
            light.Curves[k].Samples = still; // the rotation is filtered as a triple
        Sample(light, i, {0.0f, 1.0f, 2.0f});
        Finish(light, 2);
        EXPECT_EQ(light.Curves[i].Keys.size(), 2u) << i;
        EXPECT_EQ(light.Curves[i].Keys.back(), (CurveKey{1.0f, 2.0f, KeyKind::Hermite, 2.0f, 2.0f})) << i;
        for (std::size_t group = 0; group < std::size(Flags); ++group)
            EXPECT_EQ(light.*Flags[group], group == GroupOf(i)) << i << " " << group;
        EXPECT_TRUE(HasAnimation(light)) << i;
    }
}

TEST(FinishLight, DoesNotCountAConstantOfAGroup)
{
    for (std::size_t i = 1; i < LightCurve::Count; ++i) {
        Light light;
        const Samples still(3, 0.0f);
        for (std::size_t k = LightCurve::Rotate; k < LightCurve::Translate; ++k)
            light.Curves[k].Samples = still;
        Sample(light, i, {5.0f, 5.0f, 5.0f});
        Finish(light);
        EXPECT_TRUE(light.Curves[i].NeedsOutput) << i;
        EXPECT_TRUE(light.Curves[i].Keys.empty()) << i;
        EXPECT_FALSE(HasAnimation(light)) << i;
    }
}

TEST(FinishLight, GivesVisibilityStepKeys)
{
    Light light;
    Sample(light, LightCurve::Visibility, {1, 1, 0, 0, 0, 1, 1});
    Finish(light, 2);
    const std::vector<CurveKey>& keys = light.Curves[LightCurve::Visibility].Keys;
    ASSERT_EQ(keys.size(), 3u);
    EXPECT_EQ(keys[0], (CurveKey{0.0f, 1.0f}));
    EXPECT_EQ(keys[1], (CurveKey{1.0f, 0.0f}));
    EXPECT_EQ(keys[2], (CurveKey{2.5f, 1.0f}));
    for (const auto flag : Flags)
        EXPECT_FALSE(light.*flag) << "visibility belongs to no group";
    EXPECT_TRUE(HasAnimation(light));
}

/// Both triples are the same orientation, so that the filter takes the first form again.
TEST(FinishLight, FiltersItsRotationAndKeepsWhatItWas)
{
    Light light;
    const Samples x = {0.0f, 180.0f}, y = {80.0f, 100.0f}, z = {0.0f, 180.0f};
    Sample(light, LightCurve::Rotate, x);
    Sample(light, LightCurve::Rotate + 1, y);
    Sample(light, LightCurve::Rotate + 2, z);
    Finish(light);
    EXPECT_EQ(light.Curves[LightCurve::Rotate].SavedSamples, x);
    EXPECT_EQ(light.Curves[LightCurve::Rotate + 1].SavedSamples, y);
    EXPECT_EQ(light.Curves[LightCurve::Rotate + 2].SavedSamples, z);
    EXPECT_EQ(light.Curves[LightCurve::Rotate].Samples, (Samples{0.0f, 0.0f}));
    EXPECT_EQ(light.Curves[LightCurve::Rotate + 1].Samples, (Samples{80.0f, 80.0f}));
    EXPECT_TRUE(light.Curves[LightCurve::Rotate + 2].IsConstant) << "judged after the filter";
    EXPECT_FALSE(light.IsRotateAnimated);
}

TEST(FinishLight, TakesTheColorToleranceAsItStands)
{
    Light light;
    Sample(light, LightCurve::Diffuse + 3, {0.5f, 0.54f});
    Sample(light, LightCurve::Ambient, {0.5f, 0.56f});
    Finish(light);
    EXPECT_TRUE(light.Curves[LightCurve::Diffuse + 3].IsConstant);
    EXPECT_FALSE(light.Curves[LightCurve::Ambient].IsConstant);
    EXPECT_FALSE(light.IsDiffuseAnimated);
    EXPECT_TRUE(light.IsAmbientAnimated);
}

TEST(FinishLight, ShowsIntensityAsAlphaOfItsColors)
{
    Light light = MakeLight("l", LightKind::PointLight);
    Sample(light, LightCurve::Diffuse + 3, {0.8f, 1.8f, 2.8f});
    Finish(light);
    EXPECT_TRUE(light.IsDiffuseAnimated);
    EXPECT_FALSE(light.IsSpecular0Animated);
    EXPECT_EQ(light.Curves[LightCurve::Diffuse + 3].Name, "l.da");
}

/// Samples are magnified and static values are not, so with a magnification an axis that rests is written
/// too.
TEST(FinishLights, WritesARestingAxisOfAMagnifiedLight)
{
    LightSet set;
    set.Magnify = 10.0f;
    Light& light = set.Add() = MakeLight("l", LightKind::PointLight); // at 1, 2, 3
    test::Rest(light, LightCurve::Translate, {10.0f, 20.0f, 30.0f});
    Sample(light, LightCurve::Translate, {10.0f, 20.0f, 30.0f});
    FinishLights(set, 2, true, Tolerances, ColorTolerance, 1);
    EXPECT_EQ(set.FrameSize, 2);
    EXPECT_TRUE(set.IsLoop);
    EXPECT_TRUE(light.IsTranslateAnimated);
    EXPECT_TRUE(light.Curves[LightCurve::Translate + 1].NeedsOutput);
    EXPECT_TRUE(light.Curves[LightCurve::Translate + 1].IsConstant);
    EXPECT_EQ(light.Curves[LightCurve::Translate].Tolerance, 0.04f) << "plain";
}

TEST(FinishLight, ComparesWithStaticValuesThatAreSnapped)
{
    Light light;
    light.Translate.X = 9e-7f;
    Sample(light, LightCurve::Translate, {-9e-7f, -9e-7f}); // 1.8e-6 apart, but both as good as zero
    Finish(light);
    EXPECT_FALSE(light.Curves[LightCurve::Translate].NeedsOutput);
    EXPECT_EQ(light.Translate.X, 9e-7f) << "the record keeps it";
}

} // namespace
} // namespace tq4x
