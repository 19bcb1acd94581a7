#include "material/EncodeTexture.h"

#include "material/ByteCursor.h"
#include "material/ReduceMipmap.h"
#include "material/TextureSize.h"

#include <bit>
#include <cstring>
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

/// Encodes pixels of whole bytes. `Put` writes one pixel and returns the place behind it; it is part of the
/// type so that each loop has it inlined.
template<auto Put>
std::uint8_t* EncodePixels(std::uint8_t* out, const PixelView& level)
{
    const TileTable table = BuildTileTable(level);
    for (std::size_t y = 0; y < level.Height; y += TileSide) {
        for (std::size_t x = 0; x < level.Width; x += TileSide) {
            const std::uint8_t* tile = level.Row(y) + x * BytesPerPixel;
            for (std::size_t i = 0; i < table.Count; ++i)
                out = Put(out, tile + table.Offsets[i]);
        }
    }
    return out;
}

/// Encodes two pixels to a byte, the first in the low half. `valueOf` gives the eight bits of which the high
/// four are kept.
template<typename ValueOf>
std::uint8_t* EncodeHalfBytes(std::uint8_t* out, const PixelView& level, ValueOf valueOf)
{
    const TileTable table = BuildTileTable(level);
    for (std::size_t y = 0; y < level.Height; y += TileSide) {
        for (std::size_t x = 0; x < level.Width; x += TileSide) {
            const std::uint8_t* tile = level.Row(y) + x * BytesPerPixel;
            for (std::size_t i = 0; i + 1 < table.Count; i += 2) {
                const int low = valueOf(tile + table.Offsets[i]);
                const int high = valueOf(tile + table.Offsets[i + 1]);
                *out++ = static_cast<std::uint8_t>(low >> 4 | (high & 0xF0));
            }
        }
    }
    return out;
}

/// The channels of a pixel that was read in one piece.
struct Rgba
{
    explicit Rgba(const std::uint8_t* pixel) : m_word(Word32(pixel)) {}

    std::uint32_t R() const { return m_word & 0xFF; }

    std::uint32_t G() const { return m_word >> 8 & 0xFF; }

    std::uint32_t B() const { return m_word >> 16 & 0xFF; }

    std::uint32_t A() const { return m_word >> 24; }

private:
    std::uint32_t m_word;
};

/// Writes a number of `Count` bytes, lowest byte first.
template<std::size_t Count>
std::uint8_t* PutLittle(std::uint8_t* out, std::uint32_t number)
{
    if constexpr (std::endian::native == std::endian::little)
        std::memcpy(out, &number, Count);
    else
        for (std::size_t i = 0; i < Count; ++i)
            out[i] = static_cast<std::uint8_t>(number >> 8 * i);
    return out + Count;
}

std::uint8_t* PutRed(std::uint8_t* out, const std::uint8_t* pixel)
{
    return PutLittle<1>(out, pixel[0]);
}

std::uint8_t* PutAlpha(std::uint8_t* out, const std::uint8_t* pixel)
{
    return PutLittle<1>(out, pixel[3]);
}

std::uint8_t* PutLa4(std::uint8_t* out, const std::uint8_t* pixel)
{
    const Rgba color(pixel);
    return PutLittle<1>(out, (color.R() & 0xF0) | color.A() >> 4);
}

std::uint8_t* PutLa8(std::uint8_t* out, const std::uint8_t* pixel)
{
    const Rgba color(pixel);
    return PutLittle<2>(out, color.R() << 8 | color.A());
}

std::uint8_t* PutHilo8(std::uint8_t* out, const std::uint8_t* pixel)
{
    const Rgba color(pixel);
    return PutLittle<2>(out, color.R() << 8 | color.G());
}

std::uint8_t* PutRgb565(std::uint8_t* out, const std::uint8_t* pixel)
{
    const Rgba color(pixel);
    return PutLittle<2>(out, (color.R() & 0xF8) << 8 | (color.G() & 0xFC) << 3 | color.B() >> 3);
}

std::uint8_t* PutRgb8(std::uint8_t* out, const std::uint8_t* pixel)
{
    const Rgba color(pixel);
    return PutLittle<3>(out, color.R() << 16 | color.G() << 8 | color.B());
}

std::uint8_t* PutRgb5A1(std::uint8_t* out, const std::uint8_t* pixel)
{
    const Rgba color(pixel);
    const std::uint32_t bits = (color.R() & 0xF8) << 8 | (color.G() & 0xF8) << 3 | (color.B() & 0xF8) >> 2;
    return PutLittle<2>(out, bits | color.A() >> 7);
}

std::uint8_t* PutRgba4(std::uint8_t* out, const std::uint8_t* pixel)
{
    const Rgba color(pixel);
    const std::uint32_t bits = (color.R() & 0xF0) << 8 | (color.G() & 0xF0) << 4 | (color.B() & 0xF0);
    return PutLittle<2>(out, bits | color.A() >> 4);
}

std::uint8_t* PutRgba8(std::uint8_t* out, const std::uint8_t* pixel)
{
    const Rgba color(pixel);
    return PutLittle<4>(out, color.R() << 24 | color.G() << 16 | color.B() << 8 | color.A());
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
        return EncodePixels<PutRed>(out, level);
    case TextureFormat::A4:
        return EncodeHalfBytes(out, level, [=](const std::uint8_t* pixel) { return pixel[alphaChannel]; });
    case TextureFormat::A8:
        return hasAlpha ? EncodePixels<PutAlpha>(out, level) : EncodePixels<PutRed>(out, level);
    case TextureFormat::La4:
        return EncodePixels<PutLa4>(out, level);
    case TextureFormat::La8:
        return EncodePixels<PutLa8>(out, level);
    case TextureFormat::Hilo8:
        return EncodePixels<PutHilo8>(out, level);
    case TextureFormat::Rgb565:
        return EncodePixels<PutRgb565>(out, level);
    case TextureFormat::Rgb8:
        return EncodePixels<PutRgb8>(out, level);
    case TextureFormat::Rgb5_a1:
        return EncodePixels<PutRgb5A1>(out, level);
    case TextureFormat::Rgba4:
        return EncodePixels<PutRgba4>(out, level);
    case TextureFormat::Rgba8:
        return EncodePixels<PutRgba8>(out, level);
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
