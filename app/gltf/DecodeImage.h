#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tq4x::gltf
{

/// A decoded picture: four channels (red, green, blue, alpha), rows from top to bottom without padding.
struct Picture
{
    std::uint32_t Width = 0;
    std::uint32_t Height = 0;
    std::uint32_t ChannelSize = 1;    ///< bytes of a channel: 1, or 2 (in the machine's byte order)
    std::vector<std::uint8_t> Pixels; ///< Width * Height * 4 * ChannelSize bytes

    bool operator==(const Picture&) const = default;
};

struct DecodedImage
{
    Picture Content;
    std::string Error; ///< a sentence; empty: decoded
};

/// Largest pictures that are decoded; checked before anything of their size is allocated.
inline constexpr std::uint32_t MaxPictureSide = 32768;
inline constexpr std::uint64_t MaxPicturePixels = 67'108'864;

/// Decodes a PNG or JPEG file; which of them it is, its first bytes tell. Colour profiles and gamma are not
/// applied: the numbers are those of the file. Grey becomes three equal channels, missing alpha is opaque.
[[nodiscard]] DecodedImage DecodeImage(std::span<const std::uint8_t> file);

/// The two formats; used by `DecodeImage`.
[[nodiscard]] DecodedImage DecodePng(std::span<const std::uint8_t> file);
[[nodiscard]] DecodedImage DecodeJpeg(std::span<const std::uint8_t> file);

/// The sentence for a picture beyond the limits, empty for one within.
[[nodiscard]] std::string CheckPictureSize(std::uint64_t width, std::uint64_t height);

} // namespace tq4x::gltf
