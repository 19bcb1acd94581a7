#include "gltf/DecodeImage.h"

#include <algorithm>
#include <array>

namespace tq4x::gltf
{
namespace
{

constexpr std::array<std::uint8_t, 8> PngStart = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr std::array<std::uint8_t, 3> JpegStart = {0xff, 0xd8, 0xff};

bool StartsWith(std::span<const std::uint8_t> file, std::span<const std::uint8_t> start)
{
    return file.size() >= start.size() && std::ranges::equal(file.first(start.size()), start);
}

} // namespace

std::string CheckPictureSize(std::uint64_t width, std::uint64_t height)
{
    const bool fits = width > 0 && height > 0 && width <= MaxPictureSide && height <= MaxPictureSide &&
                      width * height <= MaxPicturePixels;
    return fits ? std::string()
                : "The picture's size of " + std::to_string(width) + " x " + std::to_string(height) +
                      " is out of range.";
}

DecodedImage DecodeImage(std::span<const std::uint8_t> file)
{
    if (StartsWith(file, PngStart)) {
        return DecodePng(file);
    }
    if (StartsWith(file, JpegStart)) {
        return DecodeJpeg(file);
    }
    return {{}, "The picture is neither PNG nor JPEG."};
}

} // namespace tq4x::gltf
