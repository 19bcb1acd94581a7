#include "environment/FinishCameras.h"

#include "animation/BuildCurveKeys.h"
#include "math/Scalar.h"

#include <algorithm>
#include <string_view>

namespace tq4x
{
namespace
{

/// Which of the tolerances a channel takes.
enum class Limit
{
    Scale,
    Rotate,
    Length,
    Direction,
    Ratio,
};

struct ChannelRow
{
    std::string_view Name;
    Limit Tolerance;
    bool IsAngle = false;
};

constexpr float DirectionTolerance = 0.001f;
constexpr float RatioTolerance = 0.01f;

constexpr std::array<ChannelRow, CameraCurve::Count> Channels = {{
    {"sx", Limit::Scale},
    {"sy", Limit::Scale},
    {"sz", Limit::Scale},
    {"rx", Limit::Rotate, true},
    {"ry", Limit::Rotate, true},
    {"rz", Limit::Rotate, true},
    {"tx", Limit::Length},
    {"ty", Limit::Length},
    {"tz", Limit::Length},
    {"ax", Limit::Length},
    {"ay", Limit::Length},
    {"az", Limit::Length},
    {"ux", Limit::Direction},
    {"uy", Limit::Direction},
    {"uz", Limit::Direction},
    {"twist", Limit::Rotate, true},
    {"nearClipPlane", Limit::Length},
    {"farClipPlane", Limit::Length},
    {"aspect", Limit::Ratio},
    {"fovy", Limit::Rotate, true},
    {"orthoH", Limit::Length},
}};

float ToleranceOf(Limit limit, const NodeTolerances& tolerances, float magnify)
{
    switch (limit) {
    case Limit::Scale:
        return tolerances.Scale;
    case Limit::Rotate:
        return tolerances.Rotate;
    case Limit::Length:
        return magnify * tolerances.Translate;
    case Limit::Direction:
        return DirectionTolerance;
    case Limit::Ratio:
        return RatioTolerance;
    }
    return 0.0f;
}

/// The static values by curve.
std::array<float*, CameraCurve::Count> StaticValues(Camera& c)
{
    return {&c.Scale.X,
            &c.Scale.Y,
            &c.Scale.Z,
            &c.Rotate.X,
            &c.Rotate.Y,
            &c.Rotate.Z,
            &c.Translate.X,
            &c.Translate.Y,
            &c.Translate.Z,
            &c.TargetPosition.X,
            &c.TargetPosition.Y,
            &c.TargetPosition.Z,
            &c.UpwardVector.X,
            &c.UpwardVector.Y,
            &c.UpwardVector.Z,
            &c.Twist,
            &c.Near,
            &c.Far,
            &c.AspectRatio,
            &c.Fovy,
            &c.Height};
}

/// The flag of a curve's group, or nullptr for the channels that stand alone.
bool* GroupFlag(Camera& camera, std::size_t curve)
{
    const std::array<bool*, 5> flags = {&camera.IsScaleAnimated, &camera.IsRotateAnimated,
                                        &camera.IsTranslateAnimated, &camera.IsTargetAnimated,
                                        &camera.IsUpwardAnimated};
    const std::size_t group = curve / 3;
    return group < flags.size() ? flags[group] : nullptr;
}

void SetUpCurve(AnimationCurve& curve, const Camera& camera, const ChannelRow& channel, bool isLoop,
                float tolerance)
{
    curve.Name = camera.Name + "." + std::string(channel.Name);
    curve.IsLoop = isLoop;
    curve.IsAngle = channel.IsAngle;
    curve.Tolerance = tolerance;
    IsConstantCheck(curve);
}

void FinishCurve(Camera& camera, std::size_t index, float defaultValue, int frameSteps)
{
    AnimationCurve& curve = camera.Curves[index];
    if (index >= CameraCurve::Rotate && index < CameraCurve::Translate)
        curve.SavedSamples = curve.Samples;
    UpdateNeedsOutput(curve, defaultValue);
    if (curve.IsConstant)
        return;
    bool* flag = GroupFlag(camera, index);
    if (flag != nullptr && curve.NeedsOutput)
        *flag = true;
    BuildCurveKeys(curve, true, frameSteps);
}

} // namespace

void FinishCamera(Camera& camera, bool isLoop, const NodeTolerances& tolerances, float magnify,
                  int frameSteps)
{
    const std::array<float*, CameraCurve::Count> values = StaticValues(camera);
    for (float* value : values)
        *value = SnapToZero(*value);
    for (std::size_t i = 0; i < CameraCurve::Count; ++i)
        SetUpCurve(camera.Curves[i], camera, Channels[i], isLoop,
                   ToleranceOf(Channels[i].Tolerance, tolerances, magnify));
    for (std::size_t i = 0; i < CameraCurve::Count; ++i)
        FinishCurve(camera, i, *values[i], frameSteps);
}

void FinishCameras(CameraSet& set, std::int32_t frameSize, bool isLoop, const NodeTolerances& tolerances,
                   int frameSteps)
{
    set.FrameSize = frameSize;
    set.IsLoop = isLoop;
    for (Camera& camera : set.Cameras)
        FinishCamera(camera, isLoop, tolerances, set.Magnify, frameSteps);
}

bool HasAnimation(const Camera& camera)
{
    const bool hasGroup = camera.IsScaleAnimated || camera.IsRotateAnimated || camera.IsTranslateAnimated ||
                          camera.IsTargetAnimated || camera.IsUpwardAnimated;
    return hasGroup || std::any_of(camera.Curves.begin() + CameraCurve::Twist, camera.Curves.end(),
                                   [](const AnimationCurve& curve) { return curve.NeedsOutput; });
}

} // namespace tq4x
