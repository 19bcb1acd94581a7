#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tq4x::reader
{

/// One level of one face.
struct TextureLevel
{
    std::size_t Width = 0;
    std::size_t Height = 0;
    std::vector<std::uint8_t> Data; ///< as stored: tiled, in the texture's format
    long Line = 0;
};

struct TextureFace
{
    std::vector<TextureLevel> Levels; ///< the largest first
};

struct Texture
{
    bool IsCube = false; ///< six faces: +X, -X, +Y, -Y, +Z, -Z
    int Width = 0;       ///< of one face
    int Height = 0;
    int MipmapSize = 1; ///< number of levels
    std::string Path;   ///< of the source image
    std::string Format; ///< "L4" to "Rgba8", "Etc1", "Etc1_a4"
    std::vector<TextureFace> Faces;
    long Line = 0;
};

/// Bits for each pixel of a format, 0 for an unknown word.
[[nodiscard]] int BitsPerPixel(const std::string& format);

/// Whether the pixels of a format can be shown: every format but the block-compressed ones.
[[nodiscard]] bool CanDecode(const std::string& format);

/// The pixels of a level as R, G, B, A bytes in rows, the first row being the top of the image. Narrow
/// channels are widened so that full stays full; channels that the format lacks: grey for R, G and B where it
/// has one value, 0 for B of Hilo8, opaque alpha, black for A8 and A4. Empty for a format that can't be
/// decoded and for data that is too short.
[[nodiscard]] std::vector<std::uint8_t> DecodeLevel(const std::string& format, const TextureLevel& level);

} // namespace tq4x::reader
