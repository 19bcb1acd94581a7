#include "glb/EncodePng.h"

#include <png.h>

#include <vector>

namespace tq4x::reader
{
namespace
{

bool IsOpaque(std::span<const std::uint8_t> pixels)
{
    for (std::size_t i = 3; i < pixels.size(); i += 4) {
        if (pixels[i] != 255) {
            return false;
        }
    }
    return true;
}

std::vector<std::uint8_t> WithoutAlpha(std::span<const std::uint8_t> pixels)
{
    std::vector<std::uint8_t> colors;
    colors.reserve(pixels.size() / 4 * 3);
    for (std::size_t i = 0; i + 3 < pixels.size(); i += 4) {
        colors.insert(colors.end(), {pixels[i], pixels[i + 1], pixels[i + 2]});
    }
    return colors;
}

} // namespace

std::string EncodePng(std::size_t width, std::size_t height, std::span<const std::uint8_t> pixels)
{
    const bool isOpaque = IsOpaque(pixels);
    const std::vector<std::uint8_t> colors = isOpaque ? WithoutAlpha(pixels) : std::vector<std::uint8_t>();
    const void* const rows = isOpaque ? colors.data() : pixels.data();
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = isOpaque ? PNG_FORMAT_RGB : PNG_FORMAT_RGBA;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::string file(size, '\0');
    const bool isDone = png_image_write_to_memory(&image, file.data(), &size, 0, rows, 0, nullptr) != 0;
    png_image_free(&image);
    file.resize(isDone ? size : 0);
    return file;
}

} // namespace tq4x::reader
