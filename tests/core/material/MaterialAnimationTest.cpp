#include "material/Material.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tq4x
{
namespace
{

using Floats = std::vector<float>;

constexpr MaterialTolerances Tolerances{0.1f, 0.2f, 0.01f, 2.55f}; // a colour step of 0.01

TextureCoordinator& AddCoordinator(Material& material)
{
    material.AddTextureCoordinator(0, MappingMethod::UvCoordinateMap, 0, MatrixMode::DccSoftimage, 1.0f, 1.0f,
                                   0.0f, 0.0f, 0.0f);
    return material.TextureCoordinators.back();
}

Floats ValuesOf(const AnimationCurve& curve)
{
    Floats values;
    for (const CurveKey& key : curve.Keys)
        values.push_back(key.Value);
    return values;
}

Floats FramesOf(const AnimationCurve& curve)
{
    Floats frames;
    for (const CurveKey& key : curve.Keys)
        frames.push_back(key.Frame);
    return frames;
}

TEST(MaterialAnimation, CurvesTakeLoopAngleToleranceAndName)
{
    for (const bool isLoop : {false, true}) {
        Material material;
        material.Name = "Sea";
        TextureCoordinator& coordinator = AddCoordinator(material);
        coordinator.Curves[0].IsAngle = true; // put right
        material.FinishAnimation(isLoop, Tolerances, 1);
        EXPECT_EQ(material.IsLoop, isLoop);
        EXPECT_EQ(coordinator.IsLoop, isLoop);
        const float tolerances[] = {0.1f, 0.1f, 0.2f, 0.01f, 0.01f};
        const char* names[] = {"Sea.ScaleS", "Sea.ScaleT", "Sea.Rotate", "Sea.TranslateS", "Sea.TranslateT"};
        for (std::size_t i = 0; i < 5; ++i) {
            SCOPED_TRACE(names[i]);
            EXPECT_EQ(coordinator.Curves[i].Name, names[i]);
            EXPECT_EQ(coordinator.Curves[i].IsLoop, isLoop);
            EXPECT_EQ(coordinator.Curves[i].IsAngle, i == 2);
            EXPECT_EQ(coordinator.Curves[i].Tolerance, tolerances[i]);
        }
    }
}

TEST(MaterialAnimation, ColorCurvesTakeTheToleranceInSteps)
{
    const char* names[] = {"EmissionR",  "EmissionG",  "EmissionB",  "EmissionA", "AmbientR", "AmbientG",
                           "AmbientB",   "AmbientA",   "DiffuseR",   "DiffuseG",  "DiffuseB", "DiffuseA",
                           "Specular0R", "Specular0G", "Specular0B", "Specular0A"};
    Material material;
    material.Name = "Sea";
    material.FinishAnimation(true, {0.0f, 0.0f, 0.0f, 0.003f}, 1);
    for (std::size_t i = 0; i < ColorCurveCount; ++i) {
        EXPECT_EQ(material.ColorCurves[i].Name, "Sea." + std::string(names[i]));
        EXPECT_TRUE(material.ColorCurves[i].IsLoop);
        EXPECT_FALSE(material.ColorCurves[i].IsAngle);
        EXPECT_EQ(material.ColorCurves[i].Tolerance, 0.003f * 0.003921569f);
    }
}

TEST(MaterialAnimation, CoordinatorFlags)
{
    const struct
    {
        const char* Name;
        std::size_t Curve;
        Floats Samples;
        bool IsScaleAnimated, IsRotateAnimated, IsTranslateAnimated;
        std::size_t KeyCount;
        bool NeedsOutput;
    } cases[] = {
        {"scale s moves", 0, {1.0f, 2.0f}, true, false, false, 2, true},
        {"scale t moves", 1, {1.0f, 2.0f}, true, false, false, 2, true},
        {"rotation moves", 2, {0.0f, 10.0f}, false, true, false, 2, true},
        {"translation s moves", 3, {0.0f, 1.0f}, false, false, true, 2, true},
        {"translation t moves", 4, {0.0f, 1.0f}, false, false, true, 2, true},
        {"nothing sampled", 0, {}, false, false, false, 0, false},
        {"at rest", 0, {1.0f, 1.0f}, false, false, false, 0, false},
        {"moves less than the tolerance", 0, {1.0f, 1.09f}, false, false, false, 0, false},
        {"at rest beside the base value: output, but no flag", 3, {0.5f, 0.5f}, false, false, false, 0, true},
        {"at rest a whole turn off", 2, {360.0f, 360.0f}, false, false, false, 0, false},
    };

    for (const auto& c : cases) {
        SCOPED_TRACE(c.Name);
        Material material;
        TextureCoordinator& coordinator = AddCoordinator(material);
        coordinator.Curves[c.Curve].Samples = c.Samples;
        material.FinishAnimation(false, Tolerances, 1);
        EXPECT_EQ(coordinator.IsScaleAnimated, c.IsScaleAnimated);
        EXPECT_EQ(coordinator.IsRotateAnimated, c.IsRotateAnimated);
        EXPECT_EQ(coordinator.IsTranslateAnimated, c.IsTranslateAnimated);
        EXPECT_EQ(coordinator.Curves[c.Curve].Keys.size(), c.KeyCount);
        EXPECT_EQ(coordinator.Curves[c.Curve].NeedsOutput, c.NeedsOutput);
    }
}

TEST(MaterialAnimation, BaseValuesAreTheStaticOnes)
{
    const float TextureCoordinator::*const fields[] = {
        &TextureCoordinator::ScaleS, &TextureCoordinator::ScaleT, &TextureCoordinator::Rotate,
        &TextureCoordinator::TranslateS, &TextureCoordinator::TranslateT};
    for (std::size_t rest = 0; rest < 5; ++rest) {
        Material material;
        material.AddTextureCoordinator(0, MappingMethod::UvCoordinateMap, 0, MatrixMode::DccSoftimage, 2.0f,
                                       3.0f, 4.0f, 5.0f, 6.0f);
        TextureCoordinator& coordinator = material.TextureCoordinators[0];
        for (std::size_t i = 0; i < 5; ++i)
            coordinator.Curves[i].Samples.assign(3, coordinator.*fields[rest]);
        material.FinishAnimation(false, Tolerances, 1);
        for (std::size_t i = 0; i < 5; ++i)
            EXPECT_EQ(coordinator.Curves[i].NeedsOutput, i != rest) << rest << " " << i;
    }
}

TEST(MaterialAnimation, NegligibleBaseValueCountsAsZero)
{
    Material material;
    TextureCoordinator& coordinator = AddCoordinator(material);
    coordinator.TranslateS = 9e-07f;
    coordinator.Curves[3].Samples = {-9e-07f};
    material.FinishAnimation(false, Tolerances, 1);
    EXPECT_FALSE(coordinator.Curves[3].NeedsOutput) << "apart by more than 1e-6, but both next to 0";
}

TEST(MaterialAnimation, ColorFlagsAndBaseValues)
{
    bool Material::*const flags[] = {&Material::IsEmissionAnimated, &Material::IsAmbientAnimated,
                                     &Material::IsDiffuseAnimated, &Material::IsSpecular0Animated};
    for (std::size_t curve = 0; curve < ColorCurveCount; ++curve) {
        SCOPED_TRACE(curve);
        Material material;
        material.ColorCurves[curve].Samples = {0.0f, 0.5f};
        material.FinishAnimation(false, Tolerances, 1);
        for (std::size_t group = 0; group < 4; ++group)
            EXPECT_EQ(material.*flags[group], group == curve / 4) << group;
        EXPECT_EQ(ValuesOf(material.ColorCurves[curve]), (Floats{0.0f, 0.5f}));
    }
}

TEST(MaterialAnimation, ColorsAtRestAreComparedWithTheirOwnComponent)
{
    for (std::size_t rest = 0; rest < ColorCurveCount; ++rest) {
        Material material;
        const auto valueOf = [](std::size_t i) { return static_cast<float>(i + 1) / 16.0f; };
        Color* const colors[] = {&material.Emission, &material.Ambient, &material.Diffuse,
                                 &material.Specular0};
        for (std::size_t i = 0; i < 4; ++i)
            *colors[i] = {valueOf(4 * i), valueOf(4 * i + 1), valueOf(4 * i + 2), valueOf(4 * i + 3)};
        for (AnimationCurve& curve : material.ColorCurves)
            curve.Samples.assign(2, valueOf(rest));
        material.FinishAnimation(false, Tolerances, 1);
        for (std::size_t i = 0; i < ColorCurveCount; ++i)
            EXPECT_EQ(material.ColorCurves[i].NeedsOutput, i != rest) << rest << " " << i;
        EXPECT_FALSE(material.HasAnimatedMember());
    }
}

TEST(MaterialAnimation, RotationIsUnwrapped)
{
    Material material;
    TextureCoordinator& coordinator = AddCoordinator(material);
    coordinator.Curves[2].Samples = {170.0f, 179.0f, -179.0f, -170.0f};
    material.FinishAnimation(false, {0.0f, 0.0f, 0.0f, 0.0f}, 1);
    EXPECT_EQ(ValuesOf(coordinator.Curves[2]), (Floats{170.0f, 179.0f, 181.0f, 190.0f}));
    EXPECT_EQ(coordinator.Curves[2].Samples, (Floats{170.0f, 179.0f, -179.0f, -170.0f}));
}

TEST(MaterialAnimation, OtherChannelsAreNoAngles)
{
    Material material;
    TextureCoordinator& coordinator = AddCoordinator(material);
    coordinator.Curves[3].Samples = {0.0f, 700.0f};
    material.ColorCurves[0].Samples = {0.0f, 700.0f};
    material.FinishAnimation(false, Tolerances, 1);
    EXPECT_EQ(ValuesOf(coordinator.Curves[3]), (Floats{0.0f, 700.0f}));
    EXPECT_EQ(ValuesOf(material.ColorCurves[0]), (Floats{0.0f, 700.0f}));
}

TEST(MaterialAnimation, FramesFollowTheStepsPerFrame)
{
    Material material;
    TextureCoordinator& coordinator = AddCoordinator(material);
    coordinator.Curves[3].Samples = {0.0f, 0.0f, 1.0f, 0.0f};
    material.FinishAnimation(false, {0.0f, 0.0f, 0.0f, 0.0f}, 2);
    EXPECT_EQ(FramesOf(coordinator.Curves[3]), (Floats{0.0f, 0.5f, 1.0f, 1.5f}));
}

TEST(MaterialAnimation, KeysAreReducedWithTheChannelsTolerance)
{
    Material material;
    TextureCoordinator& coordinator = AddCoordinator(material);
    coordinator.Curves[0].Samples = {1.0f, 2.0f, 3.0f, 4.0f};
    material.ColorCurves[8].Samples = {0.0f, 0.25f, 0.5f, 0.75f};
    material.FinishAnimation(false, Tolerances, 1);
    EXPECT_EQ(FramesOf(coordinator.Curves[0]), (Floats{0.0f, 3.0f}));
    EXPECT_EQ(FramesOf(material.ColorCurves[8]), (Floats{0.0f, 3.0f}));
    EXPECT_EQ(material.ColorCurves[8].Keys[0].OutSlope, 0.25f);
}

TEST(MaterialAnimation, EachCoordinatorHasItsOwnFlags)
{
    Material material;
    AddCoordinator(material);
    AddCoordinator(material).Curves[4].Samples = {0.0f, 1.0f};
    material.FinishAnimation(false, Tolerances, 1);
    EXPECT_FALSE(material.TextureCoordinators[0].IsTranslateAnimated);
    EXPECT_TRUE(material.TextureCoordinators[1].IsTranslateAnimated);
    EXPECT_TRUE(material.HasAnimatedMember());
}

} // namespace
} // namespace tq4x
