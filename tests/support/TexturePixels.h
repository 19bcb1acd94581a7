#pragma once

#include "material/TextureImage.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace tq4x::test
{

/// R, G, B, A pixels made by a function of column and row that gives a word 0xRRGGBBAA.
template<typename PixelAt>
std::vector<std::uint8_t> MakePixels(int width, int height, PixelAt pixelAt)
{
    std::vector<std::uint8_t> pixels;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const std::uint32_t word = pixelAt(x, y);
            for (const int shift : {24, 16, 8, 0})
                pixels.push_back(static_cast<std::uint8_t>(word >> shift));
        }
    }
    return pixels;
}

inline std::vector<std::uint8_t> RandomPixels(int width, int height, std::mt19937& random)
{
    return MakePixels(width, height, [&](int, int) { return static_cast<std::uint32_t>(random()); });
}

/// A raw image as a collector makes it.
inline TextureImage RawImage(int width, int height, const std::vector<std::uint8_t>& pixels, bool hasAlpha)
{
    TextureImage image;
    image.Path = "raw.png";
    image.SetPixels(pixels, width, height, hasAlpha);
    return image;
}

/// A raw image of one colour, 0xRRGGBBAA.
inline TextureImage PlainImage(int width, int height, std::uint32_t color, bool hasAlpha = false)
{
    return RawImage(width, height, MakePixels(width, height, [=](int, int) { return color; }), hasAlpha);
}

} // namespace tq4x::test
