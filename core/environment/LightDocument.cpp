#include "environment/LightDocument.h"

#include "animation/AnimationDocument.h"
#include "animation/GroupDescription.h"
#include "environment/FinishLights.h"
#include "environment/SortByName.h"
#include "pipeline/WordTable.h"
#include "pipeline/XmlWriter.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace tq4x
{
namespace
{

constexpr int SectionLevel = 2;

constexpr auto LightKindWords = WordTable<LightKind::SpotLight>({
    {LightKind::Ambient, "Unused"}, // an ambient light's animation says so; its element has no such attribute
    {LightKind::DirectionalLight, "DirectionalLight"},
    {LightKind::PointLight, "PointLight"},
    {LightKind::SpotLight, "SpotLight"},
});

bool IsAmbient(const Light& light)
{
    return light.LightKind == LightKind::Ambient;
}

const AnimationGroupDescription& AmbientGroup()
{
    static const AnimationGroupDescription group{"LightAnimation",
                                                 "BeforeWorldUpdate",
                                                 {
                                                     {"Transform", BlendOperationName::Transform},
                                                     {"Ambient", BlendOperationName::RgbaColor},
                                                     {"IsLightEnabled", BlendOperationName::Bool},
                                                 }};
    return group;
}

const AnimationGroupDescription& FragmentGroup()
{
    static const AnimationGroupDescription group{"LightAnimation",
                                                 "BeforeWorldUpdate",
                                                 {
                                                     {"Transform", BlendOperationName::Transform},
                                                     {"Ambient", BlendOperationName::RgbaColor},
                                                     {"Diffuse", BlendOperationName::RgbaColor},
                                                     {"Specular0", BlendOperationName::RgbaColor},
                                                     {"Specular1", BlendOperationName::RgbaColor},
                                                     {"Direction", BlendOperationName::Vector3},
                                                     {"DistanceAttenuationStart", BlendOperationName::Float},
                                                     {"DistanceAttenuationEnd", BlendOperationName::Float},
                                                     {"IsLightEnabled", BlendOperationName::Bool},
                                                 }};
    return group;
}

/// The sampler as the materials' writer takes it: both numbers index the words of the files.
LookupTableSampler ToLookupSampler(const LightSampler& sampler)
{
    return {sampler.IsAbs, static_cast<LookupInput>(sampler.Input),
            static_cast<LookupScale>(static_cast<std::int32_t>(std::trunc(sampler.Scale))),
            sampler.TableIndex};
}

/// What every light has.
void WriteCommonContent(const Light& light, const AnimationGroupDescription& group, XmlWriter& stream,
                        float magnify)
{
    stream.Element("AnimationGroupDescriptions", [&] { WriteGroupDescription(group, stream); });
    stream.Element("Transform", [&] {
        stream.Vector("Scale", light.Scale);
        stream.Vector("Rotate", light.Rotate);
        stream.Vector("Translate", {light.Translate.X * magnify, light.Translate.Y * magnify,
                                    light.Translate.Z * magnify});
    });
    stream.ColorElement("Ambient", light.Ambient);
}

void WriteFragmentLight(const Light& light, XmlWriter& stream, const LookupTableSet& lookupTables,
                        float magnify)
{
    stream.Element("FragmentLightQtr",
                   {{"Name", light.Name},
                    {"IsBranchVisible", light.IsLightEnabled},
                    {"LightKind", WordOf(LightKindWords, light.LightKind)},
                    {"IsTwoSideDiffuse", light.IsTwoSideDiffuse},
                    {"IsDistanceAttenuationEnabled", light.IsDistanceAttenuationEnabled},
                    {"DistanceAttenuationStart", light.DistanceAttenuationStart},
                    {"DistanceAttenuationEnd", light.DistanceAttenuationEnd},
                    {"IsInheritingDirectionRotate", light.IsInheritingDirectionRotate}},
                   [&] {
                       WriteCommonContent(light, FragmentGroup(), stream, magnify);
                       stream.ColorElement("Diffuse", light.Diffuse);
                       stream.ColorElement("Specular0", light.Specular0);
                       stream.ColorElement("Specular1", light.Specular1);
                       stream.Vector("Direction", light.Direction);
                       stream.Empty("NullDistanceSampler");
                       WriteLookupSampler(stream, stream.Level(), "AngleSampler",
                                          ToLookupSampler(light.AngleSampler), lookupTables);
                   });
}

std::span<const AnimationCurve> Three(const Light& light, std::size_t first)
{
    return std::span(light.Curves).subspan(first, 3);
}

void WriteTransformMember(const Light& light, XmlWriter& stream)
{
    if (!light.IsScaleAnimated && !light.IsRotateAnimated && !light.IsTranslateAnimated)
        return;
    WriteMember(stream, "Transform", [&] {
        stream.Element("TransformAnimation", [&] {
            if (light.IsScaleAnimated)
                WriteVectorAnimation(stream, Three(light, LightCurve::Scale), "ScaleVector3Animation");
            if (light.IsRotateAnimated)
                WriteVectorAnimation(stream, Three(light, LightCurve::Rotate), "RotateVector3Animation");
            if (light.IsTranslateAnimated)
                WriteVectorAnimation(stream, Three(light, LightCurve::Translate),
                                     "TranslateVector3Animation");
        });
    });
}

template<std::size_t First>
void WriteColorMember(const Light& light, XmlWriter& stream, std::string_view path, bool isWritten)
{
    if (isWritten)
        WriteMember(stream, path, [&] {
            WriteRgbaColorAnimation(stream, std::span(light.Curves).template subspan<First, 4>());
        });
}

void WriteMembers(const Light& light, XmlWriter& stream)
{
    const bool isFragment = !IsAmbient(light);
    const AnimationCurve& visibility = light.Curves[LightCurve::Visibility];
    WriteTransformMember(light, stream);
    WriteColorMember<LightCurve::Ambient>(light, stream, "Ambient", light.IsAmbientAnimated);
    WriteColorMember<LightCurve::Diffuse>(light, stream, "Diffuse", isFragment && light.IsDiffuseAnimated);
    WriteColorMember<LightCurve::Specular0>(light, stream, "Specular0",
                                            isFragment && light.IsSpecular0Animated);
    WriteColorMember<LightCurve::Specular1>(light, stream, "Specular1",
                                            isFragment && light.IsSpecular1Animated);
    if (isFragment && light.LightKind != LightKind::PointLight && light.IsDirectionAnimated)
        WriteMember(stream, "Direction", [&] {
            WriteVectorAnimation(stream, Three(light, LightCurve::Direction), "Vector3Animation");
        });
    if (visibility.NeedsOutput)
        WriteMember(stream, "IsLightEnabled",
                    [&] { WriteBoolAnimation(stream, visibility, light.IsLightEnabled); });
}

} // namespace

void WriteLight(const Light& light, XmlWriter& stream, const LookupTableSet& lookupTables, float magnify)
{
    if (!IsAmbient(light))
        return WriteFragmentLight(light, stream, lookupTables, magnify);
    stream.Element("AmbientLightQtr", {{"Name", light.Name}, {"IsBranchVisible", light.IsLightEnabled}},
                   [&] { WriteCommonContent(light, AmbientGroup(), stream, magnify); });
}

void WriteLightAnimation(const Light& light, XmlWriter& stream, std::int32_t frameSize, bool isLoop)
{
    stream.Element("LightAnimationData",
                   {{"Name", light.Name + ".LightAnimation"},
                    {"FrameSize", frameSize},
                    {"LoopMode", LoopModeWord(isLoop)},
                    {"IsAdditiveAnimation", false},
                    {"LightKind", WordOf(LightKindWords, light.LightKind)},
                    {"LightType", IsAmbient(light) ? "Ambient" : "Fragment"}},
                   [&] { stream.Element("MemberAnimationDataSet", [&] { WriteMembers(light, stream); }); });
}

void WriteLights(LightSet& set, XmlWriter& stream, std::string_view baseName)
{
    if (set.Lights.empty())
        return;
    set.LookupTables.MakeNamesUnique();
    set.LookupTables.WriteXml(stream, SectionLevel, std::string(baseName) + ".LightLutset");
    stream.AtLevel(SectionLevel, [&] {
        stream.Element("Lights", [&] {
            for (const Light* light : SortByName(set.Lights))
                WriteLight(*light, stream, set.LookupTables, set.Magnify);
        });
    });
}

void WriteLightAnimations(const LightSet& set, XmlWriter& stream)
{
    if (std::none_of(set.Lights.begin(), set.Lights.end(),
                     [](const Light& each) { return HasAnimation(each); }))
        return;
    stream.AtLevel(SectionLevel, [&] {
        stream.Element("Animations", [&] {
            for (const Light& light : set.Lights)
                if (HasAnimation(light))
                    WriteLightAnimation(light, stream, set.FrameSize, set.IsLoop);
        });
    });
}

} // namespace tq4x
