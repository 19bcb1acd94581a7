#include <cmath>
#include <numbers>

#include <xsi_light.h>
#include <xsi_parameter.h>

#include "gltf/SceneBuild.h"
#include "scene/CreateObjects.h"
#include "scene/CreateParameters.h"

// Cameras and lights: a value of the file is a parameter of the host, in degrees and whole openings in place
// of radians and halves.
namespace tq4x::gltf
{
namespace
{

namespace Host = XSI::Host;

using Evaluate = std::function<double(double frame)>;

constexpr double Degrees = 180.0 / std::numbers::pi;
constexpr double FallbackAspect = 4.0 / 3.0; ///< of a camera that takes that of the window it is shown in
constexpr double FarEnough = 32768.0;        ///< for a camera that sees without end
constexpr double PlaneHeight = 1.0;          ///< only the ratio of width and height means anything

void SetValue(const XSI::X3DObject& object, const char* name, double value)
{
    XSI::X3DObject(object).PutParameterValue(name, value);
}

/// Sets a parameter to `factor` times a value, and to the same of the track that moves it.
void SetScaled(const XSI::X3DObject& object, const char* name, double value, double factor,
               const AnimationTracks::Track& track)
{
    SetValue(object, name, value * factor);
    if (track) {
        Host::SetCurveFunction(
            object.GetParameter(name),
            [evaluate = ComponentOf(track, 0), factor](double frame) { return factor * evaluate(frame); });
    }
}

/// What a value is at a frame: its track's, or the one at rest.
Evaluate ValueOf(const AnimationTracks::Track& track, double rest)
{
    return track ? ComponentOf(track, 0) : Evaluate([rest](double) { return rest; });
}

/// Aspect ratio of an orthographic camera, which is given by two halves.
void SetOrthographicAspect(const SceneBuild& build, std::size_t index, const XSI::X3DObject& object)
{
    const Camera& camera = build.Source->Cameras[index];
    const auto width = build.Tracks.Find(AnimatedProperty::HalfWidth, index);
    const auto height = build.Tracks.Find(AnimatedProperty::HalfHeight, index);
    const Evaluate ratio = [w = ValueOf(width, camera.HalfWidth), h = ValueOf(height, camera.HalfHeight)](
                               double frame) { return w(frame) / h(frame); };
    SetValue(object, "aspect", camera.HalfWidth / camera.HalfHeight);
    SetValue(object, "projplanewidth", PlaneHeight * camera.HalfWidth / camera.HalfHeight);
    if (width || height) {
        Host::SetCurveFunction(object.GetParameter("aspect"), ratio);
        Host::SetCurveFunction(object.GetParameter("projplanewidth"),
                               [ratio](double frame) { return PlaneHeight * ratio(frame); });
    }
}

void SetPerspectiveAspect(const SceneBuild& build, std::size_t index, const XSI::X3DObject& object)
{
    const auto track = build.Tracks.Find(AnimatedProperty::AspectRatio, index);
    const double aspect = build.Source->Cameras[index].AspectRatio.value_or(FallbackAspect);
    SetScaled(object, "aspect", aspect, 1.0, track);
    SetScaled(object, "projplanewidth", aspect, PlaneHeight, track);
}

bool IsUsable(const Camera& camera)
{
    const bool hasOpening = camera.IsPerspective ? camera.VerticalAngle > 0.0 : camera.HalfHeight != 0.0;
    return hasOpening && std::isfinite(camera.Near) && (!camera.AspectRatio || *camera.AspectRatio > 0.0) &&
           (!camera.Far || *camera.Far > camera.Near);
}

double ConeOf(double outer, double)
{
    return 2.0 * outer * Degrees;
}

double SpreadOf(double outer, double inner)
{
    return (outer - inner) * Degrees;
}

/// Sets a parameter from the two angles of a spot light, wherever these are animated.
void SetFromCone(const SceneBuild& build, std::size_t index, const XSI::Parameter& parameter,
                 double (*compute)(double outer, double inner))
{
    const Light& light = build.Source->Lights[index];
    const auto outer = build.Tracks.Find(AnimatedProperty::OuterConeAngle, index);
    const auto inner = build.Tracks.Find(AnimatedProperty::InnerConeAngle, index);
    XSI::Parameter(parameter).PutValue(compute(light.OuterConeAngle, light.InnerConeAngle));
    if (outer || inner) {
        Host::SetCurveFunction(parameter, [compute, o = ValueOf(outer, light.OuterConeAngle),
                                           i = ValueOf(inner, light.InnerConeAngle)](double frame) {
            return compute(o(frame), i(frame));
        });
    }
}

} // namespace

void SetCamera(const SceneBuild& build, std::size_t index, const XSI::X3DObject& object, Notes& notes)
{
    const Camera& camera = build.Source->Cameras[index];
    const auto track = [&](AnimatedProperty property) { return build.Tracks.Find(property, index); };
    SetValue(object, "proj", camera.IsPerspective ? 1.0 : 0.0);
    SetValue(object, "projplaneheight", PlaneHeight);
    if (!IsUsable(camera)) {
        notes.push_back(
            {NoteSeverity::Warning, "/cameras/" + std::to_string(index),
             "The camera's opening or planes make no sense; they stay as a new camera has them."});
        return;
    }
    if (camera.IsPerspective) {
        SetScaled(object, "fov", camera.VerticalAngle, Degrees, track(AnimatedProperty::VerticalAngle));
        SetPerspectiveAspect(build, index, object);
    } else {
        SetScaled(object, "orthoheight", camera.HalfHeight, 2.0, track(AnimatedProperty::HalfHeight));
        SetOrthographicAspect(build, index, object);
    }
    SetScaled(object, "near", camera.Near, 1.0, track(AnimatedProperty::Near));
    SetScaled(object, "far", camera.Far.value_or(std::max(FarEnough, 2.0 * camera.Near)), 1.0,
              track(AnimatedProperty::Far));
}

void SetLight(const SceneBuild& build, std::size_t index, const XSI::X3DObject& object)
{
    const Light& light = build.Source->Lights[index];
    const XSI::Shader shader = Host::LightShaderOf(object.GetRef());
    const XSI::Parameter color = shader.GetParameter("color");
    Host::SetColor(color, light.Color[0], light.Color[1], light.Color[2]);
    if (const auto track = build.Tracks.Find(AnimatedProperty::LightColor, index)) {
        constexpr const char* Components[] = {"red", "green", "blue"};
        for (std::size_t i = 0; i < 3; ++i) {
            Host::SetCurveFunction(color.GetParameter(Components[i]), ComponentOf(track, i));
        }
    }
    XSI::Shader(shader).PutParameterValue("intensity", light.Intensity);
    if (const auto track = build.Tracks.Find(AnimatedProperty::LightIntensity, index)) {
        Host::SetCurveFunction(shader.GetParameter("intensity"), ComponentOf(track, 0));
    }
    if (light.Kind == LightKind::Spot) {
        SetFromCone(build, index, object.GetParameter("LightCone"), ConeOf);
        SetFromCone(build, index, shader.GetParameter("spread"), SpreadOf);
    }
}

} // namespace tq4x::gltf
