#pragma once

#include "material/TextureFormat.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tq4x::test
{

/// The channels of an encoded pixel in as many bits as the format keeps; -1 for what it does not keep.
struct StoredPixel
{
    int R = -1;
    int G = -1;
    int B = -1;
    int A = -1;

    bool operator==(const StoredPixel&) const = default;
};

/// Bits that a format keeps of R, G, B and A; 0 for a channel that it does not keep. Grey stands in R.
inline std::array<int, 4> ChannelBits(TextureFormat format)
{
    switch (format) {
    case TextureFormat::L4:
        return {4, 0, 0, 0};
    case TextureFormat::L8:
        return {8, 0, 0, 0};
    case TextureFormat::A4:
        return {0, 0, 0, 4};
    case TextureFormat::A8:
        return {0, 0, 0, 8};
    case TextureFormat::La4:
        return {4, 0, 0, 4};
    case TextureFormat::La8:
        return {8, 0, 0, 8};
    case TextureFormat::Hilo8:
        return {8, 8, 0, 0};
    case TextureFormat::Rgb565:
        return {5, 6, 5, 0};
    case TextureFormat::Rgb8:
        return {8, 8, 8, 0};
    case TextureFormat::Rgb5_a1:
        return {5, 5, 5, 1};
    case TextureFormat::Rgba4:
        return {4, 4, 4, 4};
    case TextureFormat::Rgba8:
        return {8, 8, 8, 8};
    default:
        return {0, 0, 0, 0};
    }
}

/// The pixel number `index` of a level, counted in the order of its data.
inline StoredPixel PixelOfData(const std::uint8_t* data, TextureFormat format, std::size_t index)
{
    const std::uint8_t* one = data + index;
    const std::uint8_t* two = data + index * 2;
    const std::uint8_t* three = data + index * 3;
    const std::uint8_t* four = data + index * 4;
    const int half = data[index / 2] / (index % 2 == 0 ? 1 : 16) % 16;
    const auto word = [&] { return two[0] + 256 * two[1]; };
    switch (format) {
    case TextureFormat::L4:
        return {half, -1, -1, -1};
    case TextureFormat::A4:
        return {-1, -1, -1, half};
    case TextureFormat::L8:
        return {one[0], -1, -1, -1};
    case TextureFormat::A8:
        return {-1, -1, -1, one[0]};
    case TextureFormat::La4:
        return {one[0] / 16, -1, -1, one[0] % 16};
    case TextureFormat::La8:
        return {two[1], -1, -1, two[0]};
    case TextureFormat::Hilo8:
        return {two[1], two[0], -1, -1};
    case TextureFormat::Rgb565:
        return {word() / 2048, word() / 32 % 64, word() % 32, -1};
    case TextureFormat::Rgb5_a1:
        return {word() / 2048, word() / 64 % 32, word() / 2 % 32, word() % 2};
    case TextureFormat::Rgba4:
        return {word() / 4096, word() / 256 % 16, word() / 16 % 16, word() % 16};
    case TextureFormat::Rgb8:
        return {three[2], three[1], three[0], -1};
    case TextureFormat::Rgba8:
        return {four[3], four[2], four[1], four[0]};
    default:
        return {};
    }
}

/// Place of a pixel in its tile: the bits of x and y in turn, bit 0 of x lowest.
inline std::size_t InterleavedPlace(std::size_t x, std::size_t y)
{
    std::size_t place = 0;
    for (unsigned bit = 0; bit < 3; ++bit)
        place += ((x >> bit) % 2 << 2 * bit) + ((y >> bit) % 2 << (2 * bit + 1));
    return place;
}

/// Number of the pixel (x, y) in the data of a level whose sides are powers of two. In a tile with a side
/// below 8 the pixels outside the level are left out.
inline std::size_t PlaceInData(std::size_t x, std::size_t y, std::size_t width, std::size_t height)
{
    const std::size_t tileWidth = width < 8 ? width : 8;
    const std::size_t tileHeight = height < 8 ? height : 8;
    const std::size_t tile = y / 8 * (width / tileWidth) + x / 8;
    std::size_t before = 0;
    for (std::size_t ty = 0; ty < tileHeight; ++ty)
        for (std::size_t tx = 0; tx < tileWidth; ++tx)
            if (InterleavedPlace(tx, ty) < InterleavedPlace(x % 8, y % 8))
                ++before;
    return tile * tileWidth * tileHeight + before;
}

/// Decodes a level, rows from the top.
inline std::vector<StoredPixel> DecodeLevel(const std::uint8_t* data, TextureFormat format, std::size_t width,
                                            std::size_t height)
{
    std::vector<StoredPixel> pixels;
    for (std::size_t y = 0; y < height; ++y)
        for (std::size_t x = 0; x < width; ++x)
            pixels.push_back(PixelOfData(data, format, PlaceInData(x, y, width, height)));
    return pixels;
}

/// What a format keeps of R, G, B, A pixels. The alpha of formats that have nothing else comes from red for a
/// source without alpha.
inline std::vector<StoredPixel> KeptPixels(const std::vector<std::uint8_t>& rgba, TextureFormat format,
                                           bool hasAlpha)
{
    const std::array<int, 4> bits = ChannelBits(format);
    const bool isAlphaAlone = format == TextureFormat::A4 || format == TextureFormat::A8;
    std::vector<StoredPixel> pixels;
    for (std::size_t i = 0; i < rgba.size(); i += 4) {
        const auto kept = [&](std::size_t channel, std::size_t from) {
            return bits[channel] == 0 ? -1 : rgba[i + from] >> (8 - bits[channel]);
        };
        pixels.push_back({kept(0, 0), kept(1, 1), kept(2, 2), kept(3, isAlphaAlone && !hasAlpha ? 0 : 3)});
    }
    return pixels;
}

} // namespace tq4x::test
