#include <algorithm>
#include <array>

#include "Base64Text.h"
#include "ParseSections.h"

namespace tq4x::reader
{
namespace
{

constexpr std::array<std::string_view, 6> FaceLists = {
    "PositiveXImages", "NegativeXImages", "PositiveYImages",
    "NegativeYImages", "PositiveZImages", "NegativeZImages",
};

TextureLevel ParseLevel(const ElementReader& image, const Texture& texture, std::size_t level)
{
    TextureLevel result;
    const std::size_t shift = std::min<std::size_t>(level, 31);
    result.Width = static_cast<std::size_t>(std::max(texture.Width, 0)) >> shift;
    result.Height = static_cast<std::size_t>(std::max(texture.Height, 0)) >> shift;
    result.Line = image.Line();
    std::optional<std::vector<std::uint8_t>> data = DecodeBase64(image.Content());
    if (!data) {
        image.Findings().Error("TQ-BASE64", image.Line(),
                               "The text of " + std::string(image.Name()) + " is no Base64.");
    }
    result.Data = std::move(data).value_or(std::vector<std::uint8_t>());
    return result;
}

TextureFace ParseFace(const ElementReader& list, const Texture& texture)
{
    TextureFace face;
    for (const ElementReader& image : list.Children()) {
        face.Levels.push_back(ParseLevel(image, texture, face.Levels.size()));
    }
    return face;
}

} // namespace

Texture ParseTexture(const ElementReader& element)
{
    Texture texture;
    texture.IsCube = element.Name() == "CubeTextureQtr";
    texture.Width = element.Integer("Width");
    texture.Height = element.Integer("Height");
    texture.MipmapSize = element.Integer("MipmapSize", 1);
    texture.Path = element.Text("Path");
    texture.Format = element.Text("Format");
    texture.Line = element.Line();
    if (!texture.IsCube) {
        texture.Faces.push_back(ParseFace(element.Child("Images"), texture));
        return texture;
    }
    for (const std::string_view list : FaceLists) {
        texture.Faces.push_back(ParseFace(element.Child(list), texture));
    }
    return texture;
}

} // namespace tq4x::reader
