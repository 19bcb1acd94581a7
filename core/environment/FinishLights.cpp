#include "environment/FinishLights.h"

#include "animation/BuildCurveKeys.h"
#include "animation/FilterEulerTriple.h"
#include "math/Scalar.h"

#include <string_view>

namespace tq4x
{
namespace
{

enum class Limit
{
    Visibility,
    Scale,
    Rotate,
    Length,
    Color,
    Direction,
};

struct ChannelRow
{
    std::string_view Name;
    Limit Tolerance;
    bool IsAngle = false;
};

constexpr float VisibilityTolerance = 0.01f;
constexpr float DirectionTolerance = 0.001f;

constexpr std::array<ChannelRow, LightCurve::Count> Channels = {{
    {"visibility", Limit::Visibility},
    {"sx", Limit::Scale},
    {"sy", Limit::Scale},
    {"sz", Limit::Scale},
    {"rx", Limit::Rotate, true},
    {"ry", Limit::Rotate, true},
    {"rz", Limit::Rotate, true},
    {"tx", Limit::Length},
    {"ty", Limit::Length},
    {"tz", Limit::Length},
    {"ar", Limit::Color},
    {"ag", Limit::Color},
    {"ab", Limit::Color},
    {"aa", Limit::Color},
    {"dr", Limit::Color},
    {"dg", Limit::Color},
    {"db", Limit::Color},
    {"da", Limit::Color},
    {"s0r", Limit::Color},
    {"s0g", Limit::Color},
    {"s0b", Limit::Color},
    {"s0a", Limit::Color},
    {"s1r", Limit::Color},
    {"s1g", Limit::Color},
    {"s1b", Limit::Color},
    {"s1a", Limit::Color},
    {"dx", Limit::Direction},
    {"dy", Limit::Direction},
    {"dz", Limit::Direction},
}};

/// Lengths keep their plain tolerance although the samples are magnified; cameras differ here.
float ToleranceOf(Limit limit, const NodeTolerances& tolerances, float colorTolerance)
{
    switch (limit) {
    case Limit::Visibility:
        return VisibilityTolerance;
    case Limit::Scale:
        return tolerances.Scale;
    case Limit::Rotate:
        return tolerances.Rotate;
    case Limit::Length:
        return tolerances.Translate;
    case Limit::Color:
        return colorTolerance;
    case Limit::Direction:
        return DirectionTolerance;
    }
    return 0.0f;
}

/// What each channel is when it rests: the static fields in the order of the curves.
std::array<float, LightCurve::Count> DefaultValues(const Light& l)
{
    std::array<float, LightCurve::Count> values = {
        l.IsLightEnabled ? 1.0f : 0.0f,
        l.Scale.X,
        l.Scale.Y,
        l.Scale.Z,
        l.Rotate.X,
        l.Rotate.Y,
        l.Rotate.Z,
        l.Translate.X,
        l.Translate.Y,
        l.Translate.Z,
        l.Ambient.R,
        l.Ambient.G,
        l.Ambient.B,
        l.Ambient.A,
        l.Diffuse.R,
        l.Diffuse.G,
        l.Diffuse.B,
        l.Diffuse.A,
        l.Specular0.R,
        l.Specular0.G,
        l.Specular0.B,
        l.Specular0.A,
        l.Specular1.R,
        l.Specular1.G,
        l.Specular1.B,
        l.Specular1.A,
        l.Direction.X,
        l.Direction.Y,
        l.Direction.Z,
    };
    for (float& value : values)
        value = SnapToZero(value);
    return values;
}

/// A group: its flag, and where its curves begin.
struct GroupRow
{
    bool Light::*Flag;
    std::size_t First;
};

constexpr std::array<GroupRow, 8> Groups = {{
    {&Light::IsScaleAnimated, LightCurve::Scale},
    {&Light::IsRotateAnimated, LightCurve::Rotate},
    {&Light::IsTranslateAnimated, LightCurve::Translate},
    {&Light::IsAmbientAnimated, LightCurve::Ambient},
    {&Light::IsDiffuseAnimated, LightCurve::Diffuse},
    {&Light::IsSpecular0Animated, LightCurve::Specular0},
    {&Light::IsSpecular1Animated, LightCurve::Specular1},
    {&Light::IsDirectionAnimated, LightCurve::Direction},
}};

void RaiseGroupFlag(Light& light, std::size_t curve)
{
    const GroupRow* group = nullptr;
    for (const GroupRow& row : Groups)
        if (curve >= row.First)
            group = &row;
    if (group != nullptr)
        light.*(group->Flag) = true;
}

void FilterRotation(Light& light)
{
    for (std::size_t i = LightCurve::Rotate; i < LightCurve::Translate; ++i)
        light.Curves[i].SavedSamples = light.Curves[i].Samples;
    FilterEulerTriple(light.Curves[LightCurve::Rotate].Samples, light.Curves[LightCurve::Rotate + 1].Samples,
                      light.Curves[LightCurve::Rotate + 2].Samples);
}

void SetUpCurve(AnimationCurve& curve, const Light& light, const ChannelRow& channel, bool isLoop,
                float tolerance)
{
    curve.Name = light.Name + "." + std::string(channel.Name);
    curve.IsLoop = isLoop;
    curve.IsAngle = channel.IsAngle;
    curve.Tolerance = tolerance;
    IsConstantCheck(curve);
}

void FinishCurve(Light& light, std::size_t index, float defaultValue, int frameSteps)
{
    AnimationCurve& curve = light.Curves[index];
    UpdateNeedsOutput(curve, defaultValue);
    if (curve.IsConstant)
        return;
    if (curve.NeedsOutput)
        RaiseGroupFlag(light, index);
    if (index == LightCurve::Visibility)
        BuildStepKeys(curve, frameSteps);
    else
        BuildCurveKeys(curve, true, frameSteps);
}

} // namespace

void FinishLight(Light& light, bool isLoop, const NodeTolerances& tolerances, float colorTolerance,
                 int frameSteps)
{
    FilterRotation(light);
    for (std::size_t i = 0; i < LightCurve::Count; ++i)
        SetUpCurve(light.Curves[i], light, Channels[i], isLoop,
                   ToleranceOf(Channels[i].Tolerance, tolerances, colorTolerance));
    const std::array<float, LightCurve::Count> defaults = DefaultValues(light);
    for (std::size_t i = 0; i < LightCurve::Count; ++i)
        FinishCurve(light, i, defaults[i], frameSteps);
}

void FinishLights(LightSet& set, std::int32_t frameSize, bool isLoop, const NodeTolerances& tolerances,
                  float colorTolerance, int frameSteps)
{
    set.FrameSize = frameSize;
    set.IsLoop = isLoop;
    for (Light& light : set.Lights)
        FinishLight(light, isLoop, tolerances, colorTolerance, frameSteps);
}

bool HasAnimation(const Light& light)
{
    bool isAnimated = light.Curves[LightCurve::Visibility].NeedsOutput;
    for (const GroupRow& group : Groups)
        isAnimated |= light.*(group.Flag);
    return isAnimated;
}

} // namespace tq4x
