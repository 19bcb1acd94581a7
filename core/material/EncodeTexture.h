#pragma once

#include "material/PixelView.h"
#include "material/TextureFormat.h"
#include "material/TextureImage.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tq4x
{

/// Sides of the squares in which the console keeps a texture, in pixels.
inline constexpr std::size_t TileSide = 8;

/// Where the pixels of a tile stand, in the order in which the console keeps them: the place of pixel (x, y)
/// interleaves the bits of x and y, bit 0 of x lowest. A level with a side below 8 has tiles of that side.
struct TileTable
{
    std::array<std::uint32_t, TileSide * TileSide> Offsets{}; ///< in bytes from the tile's first pixel
    std::size_t Count = 0;

    std::span<const std::uint32_t> Pixels() const { return {Offsets.data(), Count}; }
};

/// The table of a level. Needs sides that are multiples of 8, or 1, 2 or 4.
TileTable BuildTileTable(const PixelView& level);

/// Encodes a level tile by tile, in rows of tiles from the top left, and returns the place behind what was
/// written. `out` has room for the whole bytes of the level: a single pixel of half a byte is left out.
/// `Etc1` and `Etc1_a4` write nothing: there is no encoder for them.
std::uint8_t* EncodeLevel(std::uint8_t* out, const PixelView& level, TextureFormat format, bool hasAlpha);

/// Fills `TextureData` from `Pixels`: face after face, each with all its levels. Needs a tested size, a
/// chosen format, and 1 to 8 levels.
void EncodeTexture(TextureImage& image);

} // namespace tq4x
