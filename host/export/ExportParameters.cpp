#include "export/ExportParameters.h"

#include "pages/PageParameters.h"

#include <xsi_parameter.h>

#include <algorithm>
#include <string>

namespace tq4x
{
namespace
{

constexpr const char* NodeCompressMode = "NodeCompressMode";
constexpr LONG HighestNodeCompressMode = 4;
constexpr LONG FormerHighestNodeCompressMode = 5;
constexpr LONG FormerLowestFrame = 1;
constexpr const char* FrameParameters[] = {"AnimationStartFrame", "AnimationEndFrame"};
constexpr const char* AbandonedParameters[] = {"PosQzPrecision", "RotQzPrecision", "SclQzPrecision"};

/// A value of the core as one of the host.
struct HostValue
{
    XSI::CValue operator()(bool value) const { return value; }

    XSI::CValue operator()(std::int32_t value) const { return value; }

    XSI::CValue operator()(float value) const { return value; }

    XSI::CValue operator()(const std::string& value) const { return value.c_str(); }
};

XSI::CString NameOf(std::string_view parameter)
{
    return std::string(parameter).c_str();
}

/// A limit as the host keeps it: none where the two are equal.
XSI::CValue LimitOf(double limit, double otherLimit, XSI::CValue::DataType type)
{
    return limit == otherLimit ? XSI::CValue() : XSI::CValue(limit).ConvertTo(type);
}

void AddParameter(XSI::CustomProperty& property, const DialogParameter& parameter)
{
    const XSI::CValue initial = std::visit(HostValue{}, parameter.Default);
    const XSI::CValue::DataType type = initial.GetType();
    const OptionLimits& limits = parameter.Limits;
    const XSI::CString noText;
    XSI::Parameter added;
    property.AddParameter(NameOf(parameter.Name), type, XSI::siPersistable, noText, noText, initial,
                          LimitOf(limits.Low, limits.High, type), LimitOf(limits.High, limits.Low, type),
                          LimitOf(limits.SliderLow, limits.SliderHigh, type),
                          LimitOf(limits.SliderHigh, limits.SliderLow, type), added);
}

void AddMissing(XSI::CustomProperty& property)
{
    for (const DialogParameter& parameter : DialogParameters())
        if (!property.GetParameter(NameOf(parameter.Name)).IsValid())
            AddParameter(property, parameter);
}

void Remove(XSI::CustomProperty& property, const char* name)
{
    XSI::Parameter parameter = property.GetParameter(name);
    property.RemoveParameter(parameter);
}

/// Replaces a parameter by its present form with a value.
void Replace(XSI::CustomProperty& property, const char* name, const XSI::CValue& value)
{
    Remove(property, name);
    const std::vector<DialogParameter> parameters = DialogParameters();
    const auto found = std::ranges::find(parameters, name, &DialogParameter::Name);
    AddParameter(property, *found);
    property.PutParameterValue(name, value);
}

/// Frames once began at 1; now any frame may be exported.
void MigrateFrames(XSI::CustomProperty& property)
{
    for (const char* const name : FrameParameters) {
        const XSI::Parameter parameter = property.GetParameter(name);
        if (parameter.IsValid() && parameter.GetMin() == XSI::CValue(FormerLowestFrame))
            Replace(property, name, parameter.GetValue());
    }
}

/// Node compression once was a flag, and later had a sixth mode.
void MigrateNodeCompression(XSI::CustomProperty& property)
{
    const XSI::Parameter parameter = property.GetParameter(NodeCompressMode);
    if (!parameter.IsValid())
        return;
    const LONG mode = parameter.GetValue();
    if (parameter.GetValueType() == XSI::CValue::siBool)
        Replace(property, NodeCompressMode, 0);
    else if (parameter.GetMax() == XSI::CValue(FormerHighestNodeCompressMode))
        Replace(property, NodeCompressMode, mode > HighestNodeCompressMode ? 0 : mode);
}

/// A parameter and the switches of which one must be on for it to mean anything.
struct EnableRule
{
    const char* Parameter;
    std::initializer_list<const char*> AnyOf;
};

const EnableRule EnableRules[] = {
    {"OutputFolder", {"OutputModeFile"}},
    {"MergeQmdl", {"OutputModel"}},
    {"NodeCompressMode", {"OutputModel"}},
    {"MaterialCompressMode", {"OutputModel"}},
    {"OptimizePrimitive", {"OutputModel"}},
    {"ConvertToModel", {"OutputModel"}},
    {"PositionQzType", {"OutputModel"}},
    {"NormalQzType", {"OutputModel"}},
    {"TexCoordQzType", {"OutputModel"}},
    {"AdjustSkinning", {"OutputModel"}},
    {"MeshVisibilityMode", {"OutputModel"}},
    {"NonUniformScale", {"OutputModel"}},
    {"MaxReservedUniformRegisters", {"OutputModel"}},
    {"BakePrecision",
     {"OutputAnimation", "OutputMaterialAnimation", "OutputLight", "OutputCamera", "OutputModelAnimation"}},
    {"LoopAnimation",
     {"OutputAnimation", "OutputMaterialAnimation", "OutputLight", "OutputCamera", "OutputModelAnimation"}},
    {"FrameFormat", {"OutputAnimation"}},
    {"TranslateQuantizeQuality", {"OutputAnimation"}},
    {"RotateQuantizeQuality", {"OutputAnimation"}},
    {"ScaleQuantizeQuality", {"OutputAnimation"}},
    {"NodeTransTolerance", {"OutputAnimation"}},
    {"NodeRotTolerance", {"OutputAnimation"}},
    {"NodeSclTolerance", {"OutputAnimation"}},
    {"TexTransTolerance", {"OutputMaterialAnimation"}},
    {"TexRotTolerance", {"OutputMaterialAnimation"}},
    {"TexSclTolerance", {"OutputMaterialAnimation"}},
    {"ColorTolerance", {"OutputMaterialAnimation", "OutputLight"}},
};

bool IsOn(const XSI::CustomProperty& property, const char* parameter)
{
    return property.GetParameterValue(parameter);
}

} // namespace

void DefineExportParameters(XSI::CustomProperty& property)
{
    MigrateFrames(property);
    MigrateNodeCompression(property);
    for (const char* const name : AbandonedParameters)
        Remove(property, name);
    AddMissing(property);
}

void PutExportOptions(XSI::CustomProperty& property, const ExportOptions& options)
{
    for (const DialogParameter& parameter : DialogParameters())
        property.PutParameterValue(NameOf(parameter.Name),
                                   std::visit(HostValue{}, DialogValueOf(options, parameter.Name)));
}

DialogValue ReadDialogValue(const XSI::CustomProperty& property, std::string_view parameter)
{
    const XSI::CValue value = property.GetParameterValue(NameOf(parameter));
    switch (value.GetType()) {
    case XSI::CValue::siBool:
        return static_cast<bool>(value);
    case XSI::CValue::siInt4:
        return std::int32_t{static_cast<LONG>(value)};
    case XSI::CValue::siFloat:
        return static_cast<float>(value);
    default:
        return std::string(XSI::CString(value).GetAsciiString());
    }
}

void ApplyEnableRules(const XSI::CustomProperty& property)
{
    for (const EnableRule& rule : EnableRules)
        SetEnabled(property, rule.Parameter,
                   std::ranges::any_of(rule.AnyOf, [&](const char* name) { return IsOn(property, name); }));
    SetEnabled(property, "MergeQmdlPath", IsOn(property, "OutputModel") && IsOn(property, "MergeQmdl"));
    const XSI::CString frames = property.GetParameterValue("SelectAnimationFrame");
    for (const char* const name : FrameParameters)
        SetEnabled(property, name, frames == "Range");
}

} // namespace tq4x
