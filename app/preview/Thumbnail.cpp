#include "preview/Thumbnail.h"

#include <algorithm>
#include <array>

#include "glb/EncodePng.h"

namespace tq4x::preview
{
namespace
{

constexpr std::size_t Channels = 4;

struct Block
{
    std::size_t Left = 0;
    std::size_t Top = 0;
    std::size_t Right = 0;
    std::size_t Bottom = 0;
};

std::array<std::uint8_t, Channels> MeanOf(const Pixels& pixels, const Block& block)
{
    std::array<std::uint64_t, 3> color = {};
    std::uint64_t alpha = 0;
    for (std::size_t y = block.Top; y < block.Bottom; ++y) {
        for (std::size_t x = block.Left; x < block.Right; ++x) {
            const std::uint8_t* const pixel = &pixels.Data[(y * pixels.Width + x) * Channels];
            for (std::size_t i = 0; i < color.size(); ++i) {
                color[i] += std::uint64_t{pixel[i]} * pixel[3];
            }
            alpha += pixel[3];
        }
    }
    const std::uint64_t count = (block.Right - block.Left) * (block.Bottom - block.Top);
    std::array<std::uint8_t, Channels> mean = {};
    for (std::size_t i = 0; i < color.size() && alpha > 0; ++i) {
        mean[i] = static_cast<std::uint8_t>((color[i] + alpha / 2) / alpha);
    }
    mean[3] = static_cast<std::uint8_t>((alpha + count / 2) / count);
    return mean;
}

} // namespace

Pixels ShrinkPixels(const Pixels& pixels, std::size_t most)
{
    const std::size_t longest = std::max(pixels.Width, pixels.Height);
    const std::size_t factor = (longest + most - 1) / most;
    if (factor <= 1) {
        return pixels;
    }
    Pixels small = {(pixels.Width + factor - 1) / factor, (pixels.Height + factor - 1) / factor, {}};
    small.Data.reserve(small.Width * small.Height * Channels);
    for (std::size_t y = 0; y < small.Height; ++y) {
        for (std::size_t x = 0; x < small.Width; ++x) {
            const auto mean =
                MeanOf(pixels, {x * factor, y * factor, std::min((x + 1) * factor, pixels.Width),
                                std::min((y + 1) * factor, pixels.Height)});
            small.Data.insert(small.Data.end(), mean.begin(), mean.end());
        }
    }
    return small;
}

std::string MakeThumbnail(const reader::Texture& texture)
{
    if (texture.Faces.empty() || texture.Faces[0].Levels.empty()) {
        return {};
    }
    const reader::TextureLevel& level = texture.Faces[0].Levels[0];
    Pixels pixels = {level.Width, level.Height, reader::DecodeLevel(texture.Format, level)};
    if (pixels.Data.empty()) {
        return {};
    }
    pixels = ShrinkPixels(pixels, ThumbnailSide);
    return reader::EncodePng(pixels.Width, pixels.Height, pixels.Data);
}

} // namespace tq4x::preview
