#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ReadTexture.h"

namespace tq4x::preview
{

/// R, G, B, A bytes in rows.
struct Pixels
{
    std::size_t Width = 0;
    std::size_t Height = 0;
    std::vector<std::uint8_t> Data;
};

/// Longest side of a thumbnail, in pixels.
inline constexpr std::size_t ThumbnailSide = 128;

/// Scales pixels down by a whole factor so that neither side is above `most`; smaller ones stay. Each pixel
/// is the mean of those that it stands for; transparent ones give no colour.
[[nodiscard]] Pixels ShrinkPixels(const Pixels& pixels, std::size_t most);

/// The texture's largest level as the bytes of a PNG file, for a cube that of its first face. Empty for
/// formats that can't be decoded and for damaged data.
[[nodiscard]] std::string MakeThumbnail(const reader::Texture& texture);

} // namespace tq4x::preview
