#include "material/ChooseFormat.h"

#include <cstddef>
#include <cstdint>

namespace tq4x
{
namespace
{

/// Without an early end inside the row, so that compilers can take several pixels at once.
bool IsGreyRow(const std::uint8_t* row, std::size_t width)
{
    int differences = 0;
    for (std::size_t x = 0; x < width; ++x) {
        const std::uint8_t* pixel = row + x * BytesPerPixel;
        differences |= (pixel[0] ^ pixel[1]) | (pixel[1] ^ pixel[2]);
    }
    return differences == 0;
}

} // namespace

bool IsGrey(std::span<const PixelView> faces)
{
    for (const PixelView& face : faces)
        for (std::size_t y = 0; y < face.Height; ++y)
            if (!IsGreyRow(face.Row(y), face.Width))
                return false;
    return true;
}

TextureFormat ChooseFormat(TextureUsage usage, AlphaKind alphaKind, std::span<const PixelView> faces)
{
    if (usage == TextureUsage::NormalMap)
        return TextureFormat::Hilo8;
    if (usage != TextureUsage::Color)
        return TextureFormat::Rgb565;
    const bool hasAlpha = alphaKind != AlphaKind::None;
    if (IsGrey(faces))
        return hasAlpha ? TextureFormat::La8 : TextureFormat::L8;
    return hasAlpha ? TextureFormat::Rgba4 : TextureFormat::Rgb565;
}

} // namespace tq4x
