#include "collect/ExportLight.h"

#include "collect/FiniteValues.h"
#include "collect/SampleFrames.h"
#include "collect/Visibility.h"
#include "environment/Light.h"
#include "export/ExportContext.h"
#include "pipeline/ExportValues.h"
#include "pipeline/MessageLog.h"

#include <xsi_light.h>
#include <xsi_parameter.h>
#include <xsi_shader.h>

#include <cmath>
#include <optional>

namespace tq4x
{
namespace
{

constexpr Color SwitchedOff{0.0f, 0.0f, 0.0f, 1.0f}; // a contribution that is not wanted
constexpr float DefaultSpread = 5.0f;                // degrees, where no shader tells

/// The host's `Type`; area lights and other types have no counterpart in the files.
std::optional<LightKind> KindOf(const XSI::Light& light)
{
    if (static_cast<bool>(light.GetParameterValue("LightArea")))
        return std::nullopt;
    switch (static_cast<LONG>(light.GetParameterValue("Type"))) {
    case 0:
        return LightKind::PointLight;
    case 1:
        return LightKind::DirectionalLight;
    case 2:
        return LightKind::SpotLight;
    default:
        return std::nullopt;
    }
}

XSI::Shader FirstShader(const XSI::Light& light)
{
    const XSI::CRefArray shaders = light.GetShaders();
    return shaders.GetCount() > 0 ? XSI::Shader(shaders[0]) : XSI::Shader();
}

/// Colour and, as alpha, the intensity of a light's shader: the intensity never multiplies the colour.
struct ShaderColor
{
    XSI::Parameter Red, Green, Blue, Intensity;

    explicit ShaderColor(const XSI::Shader& shader) : Intensity(shader.GetParameter("intensity"))
    {
        const XSI::Parameter color = shader.GetParameter("color");
        Red = color.GetParameter("red");
        Green = color.GetParameter("green");
        Blue = color.GetParameter("blue");
    }

    bool IsAnimated() const
    {
        return Red.IsAnimated(XSI::siAnySource) || Green.IsAnimated(XSI::siAnySource) ||
               Blue.IsAnimated(XSI::siAnySource) || Intensity.IsAnimated(XSI::siAnySource);
    }

    Color At(double frame) const
    {
        return {static_cast<float>(Red.GetValue(frame)), static_cast<float>(Green.GetValue(frame)),
                static_cast<float>(Blue.GetValue(frame)), static_cast<float>(Intensity.GetValue(frame))};
    }
};

void Push(Light& light, std::size_t first, const Color& color)
{
    light.Curves[first].Samples.push_back(color.R);
    light.Curves[first + 1].Samples.push_back(color.G);
    light.Curves[first + 2].Samples.push_back(color.B);
    light.Curves[first + 3].Samples.push_back(color.A);
}

void Push(Light& light, std::size_t first, const Vector3& vector)
{
    light.Curves[first].Samples.push_back(vector.X);
    light.Curves[first + 1].Samples.push_back(vector.Y);
    light.Curves[first + 2].Samples.push_back(vector.Z);
}

Vector3 TranslationOf(const XSI::MATH::CTransformation& transform)
{
    const XSI::MATH::CVector3 translation = transform.GetTranslation();
    return {static_cast<float>(translation.GetX()), static_cast<float>(translation.GetY()),
            static_cast<float>(translation.GetZ())};
}

/// A light shines along its negative Z axis: the third row of its matrix, turned round and not normalised.
Vector3 DirectionOf(const XSI::MATH::CTransformation& transform)
{
    const XSI::MATH::CMatrix4 matrix = transform.GetMatrix4();
    return {static_cast<float>(-matrix.GetValue(2, 0)), static_cast<float>(-matrix.GetValue(2, 1)),
            static_cast<float>(-matrix.GetValue(2, 2))};
}

} // namespace

bool ExportLight::Export()
{
    if (!ExportNode::Export())
        return false;
    if (IsHiddenForGood(Object))
        return true;
    const XSI::Light hostLight(Object);
    const std::optional<LightKind> kind = KindOf(hostLight);
    if (!kind) {
        PrintMessage("Skip (" + ObjectName() + ").", Severity::Warning);
        return true;
    }
    const XSI::Shader shader = FirstShader(hostLight);
    if (!shader.IsValid())
        ReportMessage(MessageCode::NoShader, ObjectName());
    Light& light = Context.Lights.Add();
    light.Name = TargetBone().Name;
    light.LightKind = *kind;
    ReadLightColors(light, shader);
    ReadSpotCone(light, shader);
    ReadLightTransform(light);
    ReadLightVisibility(light);
    CheckFinite(AreFinite(light));
    return true;
}

void ExportLight::ReadLightColors(Light& light, const XSI::Shader& shader) const
{
    if (!shader.IsValid())
        return;
    const XSI::Light hostLight(Object);
    const ExportValues& values = GlobalExportValues();
    const ShaderColor color(shader);
    const bool isAnimated = color.IsAnimated();
    const Color start = color.At(values.ExportStartFrame);
    const bool isDiffuse = static_cast<bool>(hostLight.GetParameterValue("DiffuseContribution"));
    const bool isSpecular = static_cast<bool>(hostLight.GetParameterValue("SpecularContribution"));
    light.Diffuse = isDiffuse ? start : SwitchedOff;
    light.Specular0 = isSpecular ? start : SwitchedOff;
    light.Specular1 = light.Specular0;
    if (!isAnimated)
        return;
    SampleFrames(values, [&](double frame) {
        const Color sample = color.At(frame);
        if (isDiffuse)
            Push(light, LightCurve::Diffuse, sample);
        if (isSpecular) {
            Push(light, LightCurve::Specular0, sample);
            Push(light, LightCurve::Specular1, sample);
        }
    });
}

void ExportLight::ReadSpotCone(Light& light, const XSI::Shader& shader)
{
    if (light.LightKind != LightKind::SpotLight)
        return;
    const auto cone = static_cast<float>(XSI::Light(Object).GetParameterValue("LightCone"));
    const float spread =
        shader.IsValid() ? static_cast<float>(shader.GetParameterValue("spread")) : DefaultSpread;
    CheckFinite(std::isfinite(cone) && std::isfinite(spread));
    SetSpotCone(light, cone, spread, Context.Lights.LookupTables);
}

void ExportLight::ReadLightTransform(Light& light) const
{
    const XSI::KinematicState global = XSI::X3DObject(Object).GetKinematics().GetGlobal();
    const ExportValues& values = GlobalExportValues();
    SampleFrames(values, [&](double frame) {
        const XSI::MATH::CTransformation transform = global.GetTransform(frame);
        const Vector3 translation = TranslationOf(transform);
        Push(light, LightCurve::Translate,
             Vector3{translation.X * values.LightMagnify, translation.Y * values.LightMagnify,
                     translation.Z * values.LightMagnify});
        Push(light, LightCurve::Direction, DirectionOf(transform));
    });
    const XSI::MATH::CTransformation start = global.GetTransform(values.ExportStartFrame);
    light.Scale = {1.0f, 1.0f, 1.0f};
    light.Translate = TranslationOf(start);
    light.Direction = DirectionOf(start);
}

void ExportLight::ReadLightVisibility(Light& light) const
{
    const ExportValues& values = GlobalExportValues();
    const std::vector<XSI::Parameter> chain = FindVisibilityChain(Object);
    SampleFrames(values, [&](double frame) {
        light.Curves[LightCurve::Visibility].Samples.push_back(IsVisibleAt(chain, frame) ? 1.0f : 0.0f);
    });
    light.IsLightEnabled = IsVisibleAt(chain, values.ExportStartFrame);
}

} // namespace tq4x
