#include <algorithm>
#include <array>
#include <charconv>
#include <string>

#include "gltf/CheckedSize.h"
#include "gltf/ReadRecords.h"

namespace tq4x::gltf
{
namespace
{

// How the values of a property are stored.
AccessorShape ShapeOf(AnimatedProperty property)
{
    switch (property) {
    case AnimatedProperty::Translation:
    case AnimatedProperty::Scale:
    case AnimatedProperty::Emissive:
    case AnimatedProperty::LightColor:
        return AccessorShape::Vec3;
    case AnimatedProperty::Rotation:
    case AnimatedProperty::BaseColor:
        return AccessorShape::Vec4;
    case AnimatedProperty::TextureOffset:
    case AnimatedProperty::TextureScale:
        return AccessorShape::Vec2;
    case AnimatedProperty::Visible:
    case AnimatedProperty::EmissiveStrength:
    case AnimatedProperty::TextureRotation:
    case AnimatedProperty::VerticalAngle:
    case AnimatedProperty::AspectRatio:
    case AnimatedProperty::HalfWidth:
    case AnimatedProperty::HalfHeight:
    case AnimatedProperty::Near:
    case AnimatedProperty::Far:
    case AnimatedProperty::LightIntensity:
    case AnimatedProperty::InnerConeAngle:
    case AnimatedProperty::OuterConeAngle:
        return AccessorShape::Scalar;
    }
    return AccessorShape::Scalar;
}

// A place that an animation pointer may name: the list that holds the object, and the path inside the object.
struct PointerRow
{
    std::string_view List;
    std::string_view Path;
    AnimatedProperty Property;
    TextureSlot Slot = TextureSlot::BaseColor;
};

constexpr std::string_view LightList = "/extensions/KHR_lights_punctual/lights/";

constexpr PointerRow PointerTable[] = {
    {"/nodes/", "translation", AnimatedProperty::Translation},
    {"/nodes/", "rotation", AnimatedProperty::Rotation},
    {"/nodes/", "scale", AnimatedProperty::Scale},
    {"/nodes/", "extensions/KHR_node_visibility/visible", AnimatedProperty::Visible},
    {"/materials/", "pbrMetallicRoughness/baseColorFactor", AnimatedProperty::BaseColor},
    {"/materials/", "emissiveFactor", AnimatedProperty::Emissive},
    {"/materials/", "extensions/KHR_materials_emissive_strength/emissiveStrength",
     AnimatedProperty::EmissiveStrength},
    {"/materials/", "pbrMetallicRoughness/baseColorTexture/extensions/KHR_texture_transform/offset",
     AnimatedProperty::TextureOffset, TextureSlot::BaseColor},
    {"/materials/", "pbrMetallicRoughness/baseColorTexture/extensions/KHR_texture_transform/rotation",
     AnimatedProperty::TextureRotation, TextureSlot::BaseColor},
    {"/materials/", "pbrMetallicRoughness/baseColorTexture/extensions/KHR_texture_transform/scale",
     AnimatedProperty::TextureScale, TextureSlot::BaseColor},
    {"/materials/", "normalTexture/extensions/KHR_texture_transform/offset", AnimatedProperty::TextureOffset,
     TextureSlot::Normal},
    {"/materials/", "normalTexture/extensions/KHR_texture_transform/rotation",
     AnimatedProperty::TextureRotation, TextureSlot::Normal},
    {"/materials/", "normalTexture/extensions/KHR_texture_transform/scale", AnimatedProperty::TextureScale,
     TextureSlot::Normal},
    {"/materials/", "emissiveTexture/extensions/KHR_texture_transform/offset",
     AnimatedProperty::TextureOffset, TextureSlot::Emissive},
    {"/materials/", "emissiveTexture/extensions/KHR_texture_transform/rotation",
     AnimatedProperty::TextureRotation, TextureSlot::Emissive},
    {"/materials/", "emissiveTexture/extensions/KHR_texture_transform/scale", AnimatedProperty::TextureScale,
     TextureSlot::Emissive},
    {"/cameras/", "perspective/yfov", AnimatedProperty::VerticalAngle},
    {"/cameras/", "perspective/aspectRatio", AnimatedProperty::AspectRatio},
    {"/cameras/", "perspective/znear", AnimatedProperty::Near},
    {"/cameras/", "perspective/zfar", AnimatedProperty::Far},
    {"/cameras/", "orthographic/xmag", AnimatedProperty::HalfWidth},
    {"/cameras/", "orthographic/ymag", AnimatedProperty::HalfHeight},
    {"/cameras/", "orthographic/znear", AnimatedProperty::Near},
    {"/cameras/", "orthographic/zfar", AnimatedProperty::Far},
    {LightList, "color", AnimatedProperty::LightColor},
    {LightList, "intensity", AnimatedProperty::LightIntensity},
    {LightList, "spot/innerConeAngle", AnimatedProperty::InnerConeAngle},
    {LightList, "spot/outerConeAngle", AnimatedProperty::OuterConeAngle},
};

std::size_t CountOf(std::string_view list, const Document& document)
{
    if (list == "/nodes/") {
        return document.Nodes.size();
    }
    if (list == "/materials/") {
        return document.Materials.size();
    }
    return list == "/cameras/" ? document.Cameras.size() : document.Lights.size();
}

// Fills property, object and slot of the channel; false for a pointer to something else.
bool ResolvePointer(const JsonPlace& place, const Document& document, AnimationChannel& channel)
{
    const std::string& pointer = place.Text();
    for (const PointerRow& row : PointerTable) {
        if (!pointer.starts_with(row.List)) {
            continue;
        }
        const std::size_t slash = pointer.find('/', row.List.size());
        if (slash == std::string::npos || std::string_view(pointer).substr(slash + 1) != row.Path) {
            continue;
        }
        const char* const digits = pointer.data() + row.List.size();
        const auto [end, error] = std::from_chars(digits, pointer.data() + slash, channel.Object);
        if (error != std::errc() || end != pointer.data() + slash ||
            channel.Object >= CountOf(row.List, document)) {
            place.Fail("The animation's target " + pointer + " does not exist.");
        }
        channel.Property = row.Property;
        channel.Slot = row.Slot;
        return true;
    }
    return false;
}

// Resolves `target`. Gives the reason where the channel is left out, an empty text otherwise.
std::string ReadTarget(const JsonPlace& target, const Document& document, AnimationChannel& channel)
{
    const std::string& path = target.Require("path").Text();
    if (path == "pointer") {
        const auto extension = FindExtension(target, "KHR_animation_pointer");
        if (!extension) {
            target.Fail("The path \"pointer\" needs the extension KHR_animation_pointer.");
        }
        const auto pointer = extension->Require("pointer");
        return ResolvePointer(pointer, document, channel)
                   ? ""
                   : "The animation of " + pointer.Text() + " is not read.";
    }
    const auto node = ReadIndex(target, "node", document.Nodes.size(), "node");
    if (!node) {
        return "A channel has no target.";
    }
    constexpr std::array<std::string_view, 3> Paths = {"translation", "rotation", "scale"};
    const auto found = std::ranges::find(Paths, path);
    if (found == Paths.end()) {
        return path == "weights" ? "The animation of morph targets is not read."
                                 : "The animation of \"" + path + "\" is not read.";
    }
    channel.Property = static_cast<AnimatedProperty>(found - Paths.begin());
    channel.Object = *node;
    return "";
}

Interpolation ReadInterpolation(const JsonPlace& sampler)
{
    constexpr std::array<std::string_view, 3> Words = {"STEP", "LINEAR", "CUBICSPLINE"};
    const auto place = sampler.Find("interpolation");
    if (!place) {
        return Interpolation::Linear;
    }
    const auto found = std::ranges::find(Words, place->Text());
    if (found == Words.end()) {
        place->Fail("There is no interpolation \"" + place->Text() + "\".");
    }
    return static_cast<Interpolation>(found - Words.begin());
}

AnimationSampler ReadSampler(const JsonPlace& place, const Document& document)
{
    AnimationSampler sampler;
    sampler.Input = place.Require("input").IndexInto(document.Accessors.size(), "accessor");
    sampler.Output = place.Require("output").IndexInto(document.Accessors.size(), "accessor");
    sampler.Shape = ReadInterpolation(place);
    const Accessor& times = document.Accessors[sampler.Input];
    if (times.Shape != AccessorShape::Scalar || times.Type != ComponentType::Float) {
        place.Require("input").Fail("Key times must be single floats.");
    }
    return sampler;
}

void CheckOutput(const JsonPlace& place, const AnimationChannel& channel, const AnimationSampler& sampler,
                 const Document& document)
{
    const Accessor& output = document.Accessors[sampler.Output];
    if (output.Shape != ShapeOf(channel.Property)) {
        place.Fail("The type of the sampler's values does not suit the target.");
    }
    const std::uint64_t perKey = sampler.Shape == Interpolation::CubicSpline ? 3 : 1;
    const auto wanted = MultiplySizes(document.Accessors[sampler.Input].Count, perKey);
    if (!wanted || output.Count != *wanted) {
        place.Fail("The sampler has " + std::to_string(output.Count) + " values for " +
                   std::to_string(document.Accessors[sampler.Input].Count) + " key times.");
    }
}

Animation ReadAnimation(const JsonPlace& place, const Document& document)
{
    Animation animation;
    animation.Name = ReadText(place, "name");
    ForEachItem(place, "samplers", [&](const JsonPlace& sampler) {
        animation.Samplers.push_back(ReadSampler(sampler, document));
    });
    ForEachItem(place, "channels", [&](const JsonPlace& item) {
        AnimationChannel channel;
        channel.Sampler = item.Require("sampler").IndexInto(animation.Samplers.size(), "sampler");
        const std::string reason = ReadTarget(item.Require("target"), document, channel);
        if (!reason.empty()) {
            animation.Unread.push_back({NoteSeverity::Warning, item.Pointer(), reason});
            return;
        }
        CheckOutput(item, channel, animation.Samplers[channel.Sampler], document);
        animation.Channels.push_back(channel);
    });
    return animation;
}

} // namespace

void ReadAnimations(const JsonPlace& root, Document& document)
{
    ForEachItem(root, "animations", [&](const JsonPlace& place) {
        document.Animations.push_back(ReadAnimation(place, document));
    });
}

} // namespace tq4x::gltf
