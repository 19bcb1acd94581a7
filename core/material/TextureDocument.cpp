#include "material/Base64.h"
#include "material/TextureImage.h"
#include "material/TextureSize.h"
#include "pipeline/XmlWriter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace tq4x
{
namespace
{

/// Element names of a face: the list of its levels, and each level.
struct FaceNames
{
    std::string_view List;
    std::string_view Image;
};

constexpr std::array<FaceNames, 1> PlainNames = {{{"Images", "PixelBasedImageQtr"}}};

constexpr std::array<FaceNames, 6> CubeNames = {{
    {"PositiveXImages", "PositiveXImageQtr"},
    {"NegativeXImages", "NegativeXImageQtr"},
    {"PositiveYImages", "PositiveYImageQtr"},
    {"NegativeYImages", "NegativeYImageQtr"},
    {"PositiveZImages", "PositiveZImageQtr"},
    {"NegativeZImages", "NegativeZImageQtr"},
}};

std::span<const FaceNames> FaceNamesOf(const TextureImage& image)
{
    if (image.IsCube)
        return CubeNames;
    return PlainNames;
}

/// Bytes whose text goes to the writer at once. A multiple of three, so that only the last piece is padded.
constexpr std::size_t PieceSize = 3 << 14;

void WriteBase64Line(XmlWriter& stream, std::span<const std::uint8_t> data)
{
    stream.LongLine([&] {
        for (std::size_t start = 0; start < data.size(); start += PieceSize)
            stream.Piece(EncodeBase64(&data[start], std::min(PieceSize, data.size() - start)));
    });
}

/// Writes the levels of a face from the front of `data`, and takes them off.
void WriteFace(XmlWriter& stream, const TextureImage& image, const FaceNames& names,
               std::span<const std::uint8_t>& data)
{
    std::int32_t width = image.Width;
    std::int32_t height = image.Height;
    stream.Element(names.List, [&] {
        for (std::int32_t level = 0; level < image.MipmapSize; ++level) {
            const std::size_t size = LevelByteCount(image.Format, width, height);
            stream.Element(names.Image, [&] { WriteBase64Line(stream, data.first(size)); });
            data = data.subspan(size);
            width /= 2;
            height /= 2;
        }
    });
}

void WriteTexture(XmlWriter& stream, const TextureImage& image)
{
    const XmlAttributes attributes = {
        {"Name", ""},
        {"Width", image.Width},
        {"Height", image.Height},
        {"MipmapSize", image.MipmapSize},
        {"Path", image.Path},
        {"Encoding", "Base64"},
        {"Format", image.FormatName()},
    };
    std::span<const std::uint8_t> data = image.TextureData;
    stream.Element(image.IsCube ? "CubeTextureQtr" : "ImageTextureQtr", attributes, [&] {
        for (const FaceNames& names : FaceNamesOf(image))
            WriteFace(stream, image, names, data);
    });
}

} // namespace

LogResult TextureImage::WriteXml(XmlWriter& stream, int level) const
{
    if (TextureData.empty() || TextureData.size() < TextureByteCount(*this))
        return {1, "No texture data: " + Path};
    stream.AtLevel(level, [&] { WriteTexture(stream, *this); });
    return {};
}

} // namespace tq4x
