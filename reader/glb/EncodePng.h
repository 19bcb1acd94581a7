#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace tq4x::reader
{

/// The bytes of a PNG file of R, G, B, A pixels in rows, the first row being the top. Without the alpha where
/// all pixels are opaque. Empty if the library fails.
[[nodiscard]] std::string EncodePng(std::size_t width, std::size_t height,
                                    std::span<const std::uint8_t> pixels);

} // namespace tq4x::reader
