#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tq4x::gltf
{

/// What a PNG file says beside its pixels, as far as a decoder that knows the pixels alone needs it.
struct PngHeader
{
    /// The colour that stands for full transparency, in the file's depth; grey as three equal values.
    /// Palettes have no such colour: their entries have an alpha each.
    std::optional<std::array<unsigned, 3>> TransparentColor;

    std::string Error; ///< a sentence where the picture's size is out of range or the file ends too early
};

/// Walks through the parts of a whole file, which begins with the format's signature.
[[nodiscard]] PngHeader ReadPngHeader(std::span<const std::uint8_t> file);

} // namespace tq4x::gltf
