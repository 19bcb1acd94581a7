#include "animation/AnimationDocument.h"
#include "material/Material.h"
#include "material/TextureReference.h"
#include "pipeline/XmlWriter.h"

#include <span>

namespace tq4x
{
namespace
{

std::string PathOf(const Material& material, std::string_view part)
{
    return "Materials[\"" + material.Name + "\"]." + std::string(part);
}

std::string PathOf(const Material& material, std::string_view list, std::size_t index, std::string_view part)
{
    return PathOf(material, list) + "[" + std::to_string(index) + "]." + std::string(part);
}

/// Keys that step through the places of the mapper's textures in the pattern list.
std::vector<CurveKey> BuildPatternKeys(const TextureMapper& mapper, TexturePatternList& patternList)
{
    std::vector<CurveKey> keys;
    keys.reserve(mapper.Patterns.size());
    for (const auto& [frame, textureName] : mapper.Patterns) {
        const std::int32_t index = patternList.FindOrAdd(textureName);
        keys.push_back({static_cast<float>(frame), static_cast<float>(index), KeyKind::Step, 0.0f, 0.0f});
    }
    return keys;
}

void WriteIntAnimation(XmlWriter& stream, std::span<const CurveKey> keys)
{
    stream.Element("IntAnimation", [&] {
        WriteSegmentsCurve(stream, "SegmentsFloatCurve", keys, RepeatMethod::None, RepeatMethod::None, false);
    });
}

void WriteVector2Member(XmlWriter& stream, std::string_view path, std::span<const AnimationCurve> curves)
{
    WriteMember(stream, path, [&] { WriteVectorAnimation(stream, curves, "Vector2Animation"); });
}

void WriteCoordinatorMembers(XmlWriter& stream, const Material& material, std::size_t index)
{
    const TextureCoordinator& coordinator = material.TextureCoordinators[index];
    const auto path = [&](std::string_view part) {
        return PathOf(material, "TextureCoordinators", index, part);
    };
    const std::span<const AnimationCurve> curves(coordinator.Curves);
    if (coordinator.IsTranslateAnimated)
        WriteVector2Member(stream, path("Translate"), curves.subspan(CoordinatorCurve::TranslateS, 2));
    if (coordinator.IsScaleAnimated)
        WriteVector2Member(stream, path("Scale"), curves.subspan(CoordinatorCurve::ScaleS, 2));
    if (coordinator.IsRotateAnimated)
        WriteMember(stream, path("Rotate"),
                    [&] { WriteFloatAnimation(stream, curves[CoordinatorCurve::Rotate]); });
}

/// The color's four curves begin at `firstCurve`.
void WriteColorMember(XmlWriter& stream, const Material& material, std::string_view color,
                      std::size_t firstCurve)
{
    const std::span<const AnimationCurve, ColorCurveCount> all(material.ColorCurves);
    const std::span<const AnimationCurve, 4> curves(all.subspan(firstCurve, 4));
    WriteMember(stream, PathOf(material, "MaterialColor.") + std::string(color),
                [&] { WriteRgbaColorAnimation(stream, curves); });
}

} // namespace

void Material::WriteTextureAnimations(TexturePatternList& patternList, XmlWriter& stream, int level) const
{
    for (std::size_t i = 0; i < TextureMappers.size(); ++i) {
        if (TextureMappers[i].Patterns.size() <= 1)
            continue;
        const std::vector<CurveKey> keys = BuildPatternKeys(TextureMappers[i], patternList);
        stream.AtLevel(level, [&] {
            WriteMember(stream, PathOf(*this, "TextureMappers", i, "Texture"),
                        [&] { WriteIntAnimation(stream, keys); });
        });
    }
}

void Material::WriteMemberAnimations(XmlWriter& stream, int level) const
{
    stream.AtLevel(level, [&] {
        for (std::size_t i = 0; i < TextureCoordinators.size(); ++i)
            WriteCoordinatorMembers(stream, *this, i);
        if (IsEmissionAnimated)
            WriteColorMember(stream, *this, "Emission", 0);
        if (IsAmbientAnimated)
            WriteColorMember(stream, *this, "Ambient", 4);
        if (IsDiffuseAnimated)
            WriteColorMember(stream, *this, "Diffuse", 8);
        if (IsSpecular0Animated)
            WriteColorMember(stream, *this, "Specular0", 12);
    });
}

} // namespace tq4x
