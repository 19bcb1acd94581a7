#include <algorithm>
#include <array>
#include <string>

#include "gltf/ReadRecords.h"

namespace tq4x::gltf
{
namespace
{

Wrap ReadWrap(const JsonPlace& sampler, std::string_view key)
{
    constexpr std::array<std::uint64_t, 3> Wraps = {33071, 33648, 10497};
    const auto place = sampler.Find(key);
    if (!place) {
        return Wrap::Repeat;
    }
    const std::uint64_t number = place->Unsigned();
    if (std::ranges::find(Wraps, number) == Wraps.end()) {
        place->Fail("There is no wrapping mode " + std::to_string(number) + ".");
    }
    return static_cast<Wrap>(number);
}

std::optional<std::uint16_t> ReadFilter(const JsonPlace& sampler, std::string_view key)
{
    constexpr std::array<std::uint64_t, 6> Filters = {9728, 9729, 9984, 9985, 9986, 9987};
    const auto place = sampler.Find(key);
    if (!place) {
        return std::nullopt;
    }
    const std::uint64_t number = place->Unsigned();
    if (std::ranges::find(Filters, number) == Filters.end()) {
        place->Fail("There is no filter " + std::to_string(number) + ".");
    }
    return static_cast<std::uint16_t>(number);
}

void ReadImage(const JsonPlace& place, Document& document)
{
    Image& image = document.Images.emplace_back();
    image.Name = ReadText(place, "name");
    image.Uri = ReadText(place, "uri");
    image.MimeType = ReadText(place, "mimeType");
    image.View = ReadIndex(place, "bufferView", document.Views.size(), "buffer view");
    if (image.Uri.empty() == !image.View.has_value()) {
        place.Fail("An image has either a uri or a buffer view.");
    }
}

TextureTransform ReadTransform(const JsonPlace& place)
{
    TextureTransform transform;
    ReadNumbers(place, "offset", transform.Offset);
    transform.Rotation = ReadNumber(place, "rotation", 0.0);
    ReadNumbers(place, "scale", transform.Scale);
    return transform;
}

std::optional<TextureUse> ReadTextureUse(const JsonPlace& owner, std::string_view key,
                                         const Document& document)
{
    const auto place = owner.Find(key);
    if (!place) {
        return std::nullopt;
    }
    TextureUse use;
    use.Texture = place->Require("index").IndexInto(document.Textures.size(), "texture");
    use.CoordinateSet = static_cast<std::size_t>(ReadUnsigned(*place, "texCoord", 0));
    use.Scale = ReadNumber(*place, key == "occlusionTexture" ? "strength" : "scale", 1.0);
    if (const auto transform = FindExtension(*place, "KHR_texture_transform")) {
        use.Transform = ReadTransform(*transform);
        use.CoordinateSet = static_cast<std::size_t>(ReadUnsigned(*transform, "texCoord", use.CoordinateSet));
    }
    return use;
}

AlphaMode ReadAlphaMode(const JsonPlace& material)
{
    constexpr std::array<std::string_view, 3> Words = {"OPAQUE", "MASK", "BLEND"};
    const auto place = material.Find("alphaMode");
    if (!place) {
        return AlphaMode::Opaque;
    }
    const auto found = std::ranges::find(Words, place->Text());
    if (found == Words.end()) {
        place->Fail("There is no alpha mode \"" + place->Text() + "\".");
    }
    return static_cast<AlphaMode>(found - Words.begin());
}

void ReadMetallicRoughness(const JsonPlace& place, Material& material, const Document& document)
{
    ReadNumbers(place, "baseColorFactor", material.BaseColor);
    material.Metallic = ReadNumber(place, "metallicFactor", 1.0);
    material.Roughness = ReadNumber(place, "roughnessFactor", 1.0);
    material.BaseColorTexture = ReadTextureUse(place, "baseColorTexture", document);
    material.MetallicRoughnessTexture = ReadTextureUse(place, "metallicRoughnessTexture", document);
}

void ReadSpecularGlossiness(const JsonPlace& place, Material& material, const Document& document)
{
    material.BaseColor = {1.0, 1.0, 1.0, 1.0};
    ReadNumbers(place, "diffuseFactor", material.BaseColor);
    material.BaseColorTexture = ReadTextureUse(place, "diffuseTexture", document);
    material.MetallicRoughnessTexture.reset(); // it belongs to the other way of telling the same
    SpecularGlossiness& gloss = material.Gloss.emplace();
    ReadNumbers(place, "specularFactor", gloss.Specular);
    gloss.Glossiness = ReadNumber(place, "glossinessFactor", 1.0);
}

Material ReadMaterial(const JsonPlace& place, const Document& document)
{
    Material material;
    material.Name = ReadText(place, "name");
    if (const auto shading = place.Find("pbrMetallicRoughness")) {
        ReadMetallicRoughness(*shading, material, document);
    }
    if (const auto gloss = FindExtension(place, "KHR_materials_pbrSpecularGlossiness")) {
        ReadSpecularGlossiness(*gloss, material, document);
    }
    material.NormalTexture = ReadTextureUse(place, "normalTexture", document);
    material.OcclusionTexture = ReadTextureUse(place, "occlusionTexture", document);
    material.EmissiveTexture = ReadTextureUse(place, "emissiveTexture", document);
    ReadNumbers(place, "emissiveFactor", material.Emissive);
    if (const auto strength = FindExtension(place, "KHR_materials_emissive_strength")) {
        material.EmissiveStrength = ReadNumber(*strength, "emissiveStrength", 1.0);
    }
    material.Alpha = ReadAlphaMode(place);
    material.AlphaCutoff = ReadNumber(place, "alphaCutoff", 0.5);
    material.DoubleSided = ReadBool(place, "doubleSided", false);
    material.Unlit = FindExtension(place, "KHR_materials_unlit").has_value();
    material.Extras = ReadExtras(place);
    return material;
}

} // namespace

void ReadTextures(const JsonPlace& root, Document& document)
{
    ForEachItem(root, "images", [&](const JsonPlace& place) { ReadImage(place, document); });
    ForEachItem(root, "samplers", [&](const JsonPlace& place) {
        Sampler& sampler = document.Samplers.emplace_back();
        sampler.Name = ReadText(place, "name");
        sampler.MagFilter = ReadFilter(place, "magFilter");
        sampler.MinFilter = ReadFilter(place, "minFilter");
        sampler.WrapS = ReadWrap(place, "wrapS");
        sampler.WrapT = ReadWrap(place, "wrapT");
    });
    ForEachItem(root, "textures", [&](const JsonPlace& place) {
        Texture& texture = document.Textures.emplace_back();
        texture.Name = ReadText(place, "name");
        texture.Sampler = ReadIndex(place, "sampler", document.Samplers.size(), "sampler");
        texture.Source = ReadIndex(place, "source", document.Images.size(), "image");
    });
}

void ReadMaterials(const JsonPlace& root, Document& document)
{
    ForEachItem(root, "materials",
                [&](const JsonPlace& place) { document.Materials.push_back(ReadMaterial(place, document)); });
}

} // namespace tq4x::gltf
