#include "material/AlphaKind.h"

#include <cstddef>

namespace tq4x
{
namespace
{

/// Judges `count` alpha values; the first one between 0 and `full` settles it.
template<typename AlphaAt>
AlphaKind JudgeAlpha(std::size_t count, int full, AlphaAt alphaAt)
{
    AlphaKind kind = AlphaKind::None;
    for (std::size_t i = 0; i < count; ++i) {
        const int alpha = alphaAt(i);
        if (alpha > 0 && alpha < full)
            return AlphaKind::Gradual;
        if (alpha == 0)
            kind = AlphaKind::Extremes;
    }
    return kind;
}

/// Judges the low bits up to `full` of the first byte of each pixel.
AlphaKind JudgeFirstBytes(std::span<const std::uint8_t> data, std::size_t pixelSize, int full)
{
    return JudgeAlpha(data.size() / pixelSize, full,
                      [&](std::size_t i) { return data[i * pixelSize] & full; });
}

int NibbleAt(std::span<const std::uint8_t> data, std::size_t index)
{
    return data[index / 2] >> (index % 2 * 4) & 15;
}

/// A block of 16 bytes begins with the alpha of its 16 pixels.
int BlockAlphaAt(std::span<const std::uint8_t> data, std::size_t index)
{
    return NibbleAt(data, index / 16 * 32 + index % 16);
}

} // namespace

AlphaKind AlphaKindOfPixels(std::span<const PixelView> faces)
{
    AlphaKind kind = AlphaKind::None;
    for (const PixelView& face : faces) {
        for (std::size_t y = 0; y < face.Height; ++y) {
            const std::uint8_t* alphas = face.Row(y) + 3;
            const AlphaKind ofRow =
                JudgeAlpha(face.Width, 255, [&](std::size_t x) { return alphas[x * BytesPerPixel]; });
            if (ofRow == AlphaKind::Gradual)
                return ofRow;
            if (ofRow == AlphaKind::Extremes)
                kind = ofRow;
        }
    }
    return kind;
}

AlphaKind AlphaKindOfData(TextureFormat format, std::span<const std::uint8_t> data)
{
    switch (format) {
    case TextureFormat::L4:
    case TextureFormat::L8:
    case TextureFormat::Hilo8:
    case TextureFormat::Rgb565:
    case TextureFormat::Rgb8:
    case TextureFormat::Etc1:
        return AlphaKind::None;
    case TextureFormat::A4:
        return JudgeAlpha(data.size() * 2, 15, [&](std::size_t i) { return NibbleAt(data, i); });
    case TextureFormat::A8:
        return JudgeFirstBytes(data, 1, 255);
    case TextureFormat::La4:
        return JudgeFirstBytes(data, 1, 15);
    case TextureFormat::La8:
        return JudgeFirstBytes(data, 2, 255);
    case TextureFormat::Rgb5_a1:
        return JudgeFirstBytes(data, 2, 1);
    case TextureFormat::Rgba4:
        return JudgeFirstBytes(data, 2, 15);
    case TextureFormat::Rgba8:
        return JudgeFirstBytes(data, 4, 255);
    case TextureFormat::Etc1_a4:
        return JudgeAlpha(data.size() / 16 * 16, 15, [&](std::size_t i) { return BlockAlphaAt(data, i); });
    }
    return AlphaKind::None;
}

} // namespace tq4x
