#include "animation/BuildCurveKeys.h"
#include "material/Material.h"

#include <string_view>

namespace tq4x
{
namespace
{

constexpr float ColorStep = 0.003921569f; ///< 1/255, the unit of the colour tolerance

using CoordinatorFlag = bool TextureCoordinator::*;
using CoordinatorValue = float TextureCoordinator::*;
using MaterialFlag = bool Material::*;
using MaterialColor = Color Material::*;

struct CoordinatorChannel
{
    std::string_view Name;
    CoordinatorValue Value;
    float MaterialTolerances::*Tolerance;
    CoordinatorFlag Flag;
};

/// In the order of `TextureCoordinator::Curves`.
constexpr std::array<CoordinatorChannel, CoordinatorCurve::Count> CoordinatorChannels{{
    {"ScaleS", &TextureCoordinator::ScaleS, &MaterialTolerances::Scale, &TextureCoordinator::IsScaleAnimated},
    {"ScaleT", &TextureCoordinator::ScaleT, &MaterialTolerances::Scale, &TextureCoordinator::IsScaleAnimated},
    {"Rotate", &TextureCoordinator::Rotate, &MaterialTolerances::Rotate,
     &TextureCoordinator::IsRotateAnimated},
    {"TranslateS", &TextureCoordinator::TranslateS, &MaterialTolerances::Translate,
     &TextureCoordinator::IsTranslateAnimated},
    {"TranslateT", &TextureCoordinator::TranslateT, &MaterialTolerances::Translate,
     &TextureCoordinator::IsTranslateAnimated},
}};

struct ColorGroup
{
    std::string_view Name;
    MaterialColor Value;
    MaterialFlag Flag;
};

/// In the order of `Material::ColorCurves`, four curves each.
constexpr std::array<ColorGroup, 4> ColorGroups{{
    {"Emission", &Material::Emission, &Material::IsEmissionAnimated},
    {"Ambient", &Material::Ambient, &Material::IsAmbientAnimated},
    {"Diffuse", &Material::Diffuse, &Material::IsDiffuseAnimated},
    {"Specular0", &Material::Specular0, &Material::IsSpecular0Animated},
}};

struct ColorChannel
{
    char Name;
    float Color::*Value;
};

constexpr std::array<ColorChannel, 4> ColorChannels{
    {{'R', &Color::R}, {'G', &Color::G}, {'B', &Color::B}, {'A', &Color::A}}};

/// Builds the keys of a curve that moves. True if its group is to be written; `baseValue` is what the curve
/// is compared with.
bool FinishCurve(AnimationCurve& curve, float baseValue, int frameSteps)
{
    IsConstantCheck(curve);
    UpdateNeedsOutput(curve, baseValue);
    if (curve.IsConstant)
        return false;
    BuildCurveKeys(curve, curve.IsAngle, frameSteps);
    return curve.NeedsOutput;
}

void FinishCoordinator(TextureCoordinator& coordinator, const std::string& ownerName, bool isLoop,
                       const MaterialTolerances& tolerances, int frameSteps)
{
    coordinator.IsLoop = isLoop;
    for (std::size_t i = 0; i < CoordinatorCurve::Count; ++i) {
        const CoordinatorChannel& channel = CoordinatorChannels[i];
        AnimationCurve& curve = coordinator.Curves[i];
        curve.Name = ownerName + "." + std::string(channel.Name);
        curve.IsLoop = isLoop;
        curve.IsAngle = i == CoordinatorCurve::Rotate;
        curve.Tolerance = tolerances.*channel.Tolerance;
        if (FinishCurve(curve, coordinator.*channel.Value, frameSteps))
            coordinator.*channel.Flag = true;
    }
}

void FinishColor(Material& material, std::size_t group, float tolerance, int frameSteps)
{
    const ColorGroup& color = ColorGroups[group];
    for (std::size_t i = 0; i < ColorChannels.size(); ++i) {
        AnimationCurve& curve = material.ColorCurves[group * ColorChannels.size() + i];
        curve.Name = material.Name + "." + std::string(color.Name) + ColorChannels[i].Name;
        curve.IsLoop = material.IsLoop;
        curve.IsAngle = false;
        curve.Tolerance = tolerance;
        if (FinishCurve(curve, material.*color.Value.*ColorChannels[i].Value, frameSteps))
            material.*color.Flag = true;
    }
}

} // namespace

void Material::FinishAnimation(bool isLoop, const MaterialTolerances& tolerances, int frameSteps)
{
    IsLoop = isLoop;
    for (TextureCoordinator& coordinator : TextureCoordinators)
        FinishCoordinator(coordinator, Name, isLoop, tolerances, frameSteps);
    const float colorTolerance = tolerances.Color * ColorStep;
    for (std::size_t group = 0; group < ColorGroups.size(); ++group)
        FinishColor(*this, group, colorTolerance, frameSteps);
}

} // namespace tq4x
