#include "material/EncodeTexture.h"

#include "material/ReduceMipmap.h"
#include "material/TextureSize.h"

#include <algorithm>
#include <vector>

namespace tq4x
{
namespace
{

/// Every second bit of a number below 64, from bit 0 on.
std::size_t EvenBits(std::size_t bits)
{
    return (bits & 1) | (bits >> 1 & 2) | (bits >> 2 & 4);
}

/// Calls `encode` with the first pixel of each tile.
template<typename EncodeTile>
void ForEachTile(const PixelView& level, EncodeTile encode)
{
    for (std::size_t y = 0; y < level.Height; y += TileSide)
        for (std::size_t x = 0; x < level.Width; x += TileSide)
            encode(level.Row(y) + x * BytesPerPixel);
}

/// Encodes pixels of whole bytes. `write` puts one pixel and returns the place behind it.
template<typename WritePixel>
std::uint8_t* EncodePixels(std::uint8_t* out, const PixelView& level, WritePixel write)
{
    const TileTable table = BuildTileTable(level);
    ForEachTile(level, [&](const std::uint8_t* tile) {
        for (const std::uint32_t offset : table.Pixels())
            out = write(out, tile + offset);
    });
    return out;
}

/// Encodes two pixels to a byte, the first in the low half. `valueOf` gives the eight bits of which the high
/// four are kept.
template<typename ValueOf>
std::uint8_t* EncodeHalfBytes(std::uint8_t* out, const PixelView& level, ValueOf valueOf)
{
    const TileTable table = BuildTileTable(level);
    ForEachTile(level, [&](const std::uint8_t* tile) {
        for (std::size_t i = 0; i + 1 < table.Count; i += 2) {
            const int low = valueOf(tile + table.Offsets[i]);
            const int high = valueOf(tile + table.Offsets[i + 1]);
            *out++ = static_cast<std::uint8_t>(low >> 4 | (high & 0xF0));
        }
    });
    return out;
}

std::uint8_t* PutWord(std::uint8_t* out, int word)
{
    out[0] = static_cast<std::uint8_t>(word);
    out[1] = static_cast<std::uint8_t>(word >> 8);
    return out + 2;
}

std::uint8_t* PutRed(std::uint8_t* out, const std::uint8_t* pixel)
{
    *out = pixel[0];
    return out + 1;
}

std::uint8_t* PutAlpha(std::uint8_t* out, const std::uint8_t* pixel)
{
    *out = pixel[3];
    return out + 1;
}

std::uint8_t* PutLa4(std::uint8_t* out, const std::uint8_t* pixel)
{
    *out = static_cast<std::uint8_t>((pixel[0] & 0xF0) | pixel[3] >> 4);
    return out + 1;
}

std::uint8_t* PutLa8(std::uint8_t* out, const std::uint8_t* pixel)
{
    out[0] = pixel[3];
    out[1] = pixel[0];
    return out + 2;
}

std::uint8_t* PutHilo8(std::uint8_t* out, const std::uint8_t* pixel)
{
    out[0] = pixel[1];
    out[1] = pixel[0];
    return out + 2;
}

std::uint8_t* PutRgb565(std::uint8_t* out, const std::uint8_t* pixel)
{
    return PutWord(out, (pixel[0] & 0xF8) << 8 | (pixel[1] & 0xFC) << 3 | pixel[2] >> 3);
}

std::uint8_t* PutRgb8(std::uint8_t* out, const std::uint8_t* pixel)
{
    out[0] = pixel[2];
    out[1] = pixel[1];
    out[2] = pixel[0];
    return out + 3;
}

std::uint8_t* PutRgb5A1(std::uint8_t* out, const std::uint8_t* pixel)
{
    return PutWord(out,
                   (pixel[0] & 0xF8) << 8 | (pixel[1] & 0xF8) << 3 | (pixel[2] & 0xF8) >> 2 | pixel[3] >> 7);
}

std::uint8_t* PutRgba4(std::uint8_t* out, const std::uint8_t* pixel)
{
    return PutWord(out, (pixel[0] & 0xF0) << 8 | (pixel[1] & 0xF0) << 4 | (pixel[2] & 0xF0) | pixel[3] >> 4);
}

std::uint8_t* PutRgba8(std::uint8_t* out, const std::uint8_t* pixel)
{
    out[0] = pixel[3];
    out[1] = pixel[2];
    out[2] = pixel[1];
    out[3] = pixel[0];
    return out + 4;
}

} // namespace

TileTable BuildTileTable(const PixelView& level)
{
    TileTable table;
    for (std::size_t place = 0; place < table.Offsets.size(); ++place) {
        const std::size_t x = EvenBits(place);
        const std::size_t y = EvenBits(place >> 1);
        if (x < level.Width && y < level.Height)
            table.Offsets[table.Count++] = static_cast<std::uint32_t>(y * level.Pitch + x * BytesPerPixel);
    }
    return table;
}

std::uint8_t* EncodeLevel(std::uint8_t* out, const PixelView& level, TextureFormat format, bool hasAlpha)
{
    const std::size_t alphaChannel = hasAlpha ? 3 : 0;
    switch (format) {
    case TextureFormat::L4:
        return EncodeHalfBytes(out, level, [](const std::uint8_t* pixel) { return pixel[0]; });
    case TextureFormat::L8:
        return EncodePixels(out, level, PutRed);
    case TextureFormat::A4:
        return EncodeHalfBytes(out, level, [=](const std::uint8_t* pixel) { return pixel[alphaChannel]; });
    case TextureFormat::A8:
        return hasAlpha ? EncodePixels(out, level, PutAlpha) : EncodePixels(out, level, PutRed);
    case TextureFormat::La4:
        return EncodePixels(out, level, PutLa4);
    case TextureFormat::La8:
        return EncodePixels(out, level, PutLa8);
    case TextureFormat::Hilo8:
        return EncodePixels(out, level, PutHilo8);
    case TextureFormat::Rgb565:
        return EncodePixels(out, level, PutRgb565);
    case TextureFormat::Rgb8:
        return EncodePixels(out, level, PutRgb8);
    case TextureFormat::Rgb5_a1:
        return EncodePixels(out, level, PutRgb5A1);
    case TextureFormat::Rgba4:
        return EncodePixels(out, level, PutRgba4);
    case TextureFormat::Rgba8:
        return EncodePixels(out, level, PutRgba8);
    case TextureFormat::Etc1:
    case TextureFormat::Etc1_a4:
        return out;
    }
    return out;
}

void EncodeTexture(TextureImage& image)
{
    image.TextureData.assign(TextureByteCount(image), 0);
    image.TextureDataSize = static_cast<std::int32_t>(image.TextureData.size());
    std::vector<std::uint8_t> reduced;
    if (image.MipmapSize > 1)
        reduced.resize((image.Width / 2) * (image.Height / 2) * BytesPerPixel);
    std::uint8_t* out = image.TextureData.data();
    for (PixelView level : FaceViews(image)) {
        for (std::int32_t i = 0; i < image.MipmapSize; ++i) {
            if (i > 0)
                level = ReduceMipmap(level, reduced.data());
            out = EncodeLevel(out, level, image.Format, image.HasAlpha);
        }
    }
}

} // namespace tq4x
