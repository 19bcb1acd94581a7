#include "material/ReduceMipmap.h"

#include <cstring>

namespace tq4x
{
namespace
{

constexpr std::uint32_t EverySecondByte = 0x00FF00FF;

std::uint32_t LoadPixel(const std::uint8_t* pixel)
{
    std::uint32_t word = 0;
    std::memcpy(&word, pixel, sizeof word);
    return word;
}

/// Two channels of a pixel in a word, with room above each for the sum.
std::uint32_t SumPairs(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d)
{
    return (a & EverySecondByte) + (b & EverySecondByte) + (c & EverySecondByte) + (d & EverySecondByte);
}

void ReduceRows(const std::uint8_t* upper, const std::uint8_t* lower, std::uint8_t* target, std::size_t count)
{
    for (std::size_t x = 0; x < count; ++x) {
        const std::uint32_t a = LoadPixel(upper + x * 8);
        const std::uint32_t b = LoadPixel(upper + x * 8 + 4);
        const std::uint32_t c = LoadPixel(lower + x * 8);
        const std::uint32_t d = LoadPixel(lower + x * 8 + 4);
        const std::uint32_t even = SumPairs(a, b, c, d) >> 2 & EverySecondByte;
        const std::uint32_t odd = SumPairs(a >> 8, b >> 8, c >> 8, d >> 8) >> 2 & EverySecondByte;
        const std::uint32_t reduced = even | odd << 8;
        std::memcpy(target + x * BytesPerPixel, &reduced, sizeof reduced);
    }
}

} // namespace

PixelView ReduceMipmap(const PixelView& source, std::uint8_t* target)
{
    const std::size_t width = source.Width / 2;
    const std::size_t height = source.Height / 2;
    const std::size_t pitch = width * BytesPerPixel;
    for (std::size_t y = 0; y < height; ++y)
        ReduceRows(source.Row(2 * y), source.Row(2 * y + 1), target + y * pitch, width);
    return {target, width, height, pitch};
}

} // namespace tq4x
