#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "ReadTexture.h"

namespace tq4x::reader
{
namespace
{

using Pixel = std::array<std::uint8_t, 4>;
using Bytes = std::span<const std::uint8_t>;

std::uint8_t Widen4(unsigned value)
{
    return static_cast<std::uint8_t>(value * 17);
}

std::uint8_t Widen5(unsigned value)
{
    return static_cast<std::uint8_t>(value << 3 | value >> 2);
}

std::uint8_t Widen6(unsigned value)
{
    return static_cast<std::uint8_t>(value << 2 | value >> 4);
}

Pixel Grey(std::uint8_t value, std::uint8_t alpha = 255)
{
    return {value, value, value, alpha};
}

unsigned Word(Bytes data, std::size_t pixel)
{
    return static_cast<unsigned>(data[2 * pixel] | data[2 * pixel + 1] << 8);
}

/// Two pixels share a byte, the first in its low half.
std::uint8_t Nibble(Bytes data, std::size_t pixel)
{
    return Widen4(pixel % 2 == 0 ? data[pixel / 2] & 15U : data[pixel / 2] >> 4);
}

Pixel DecodeL4(Bytes data, std::size_t pixel)
{
    return Grey(Nibble(data, pixel));
}

Pixel DecodeL8(Bytes data, std::size_t pixel)
{
    return Grey(data[pixel]);
}

Pixel DecodeA4(Bytes data, std::size_t pixel)
{
    return Grey(0, Nibble(data, pixel));
}

Pixel DecodeA8(Bytes data, std::size_t pixel)
{
    return Grey(0, data[pixel]);
}

Pixel DecodeLa4(Bytes data, std::size_t pixel)
{
    return Grey(Widen4(data[pixel] >> 4), Widen4(data[pixel] & 15U));
}

Pixel DecodeLa8(Bytes data, std::size_t pixel)
{
    return Grey(data[2 * pixel + 1], data[2 * pixel]);
}

Pixel DecodeHilo8(Bytes data, std::size_t pixel)
{
    return {data[2 * pixel + 1], data[2 * pixel], 0, 255};
}

Pixel DecodeRgb565(Bytes data, std::size_t pixel)
{
    const unsigned word = Word(data, pixel);
    return {Widen5(word >> 11), Widen6(word >> 5 & 63U), Widen5(word & 31U), 255};
}

Pixel DecodeRgb8(Bytes data, std::size_t pixel)
{
    return {data[3 * pixel + 2], data[3 * pixel + 1], data[3 * pixel], 255};
}

Pixel DecodeRgb5A1(Bytes data, std::size_t pixel)
{
    const unsigned word = Word(data, pixel);
    const std::uint8_t alpha = (word & 1U) != 0 ? 255 : 0;
    return {Widen5(word >> 11), Widen5(word >> 6 & 31U), Widen5(word >> 1 & 31U), alpha};
}

Pixel DecodeRgba4(Bytes data, std::size_t pixel)
{
    const unsigned word = Word(data, pixel);
    return {Widen4(word >> 12), Widen4(word >> 8 & 15U), Widen4(word >> 4 & 15U), Widen4(word & 15U)};
}

Pixel DecodeRgba8(Bytes data, std::size_t pixel)
{
    return {data[4 * pixel + 3], data[4 * pixel + 2], data[4 * pixel + 1], data[4 * pixel]};
}

struct FormatRow
{
    std::string_view Word;
    int Bits = 0;
    Pixel (*Decode)(Bytes data, std::size_t pixel) = nullptr; ///< absent: block-compressed
};

constexpr FormatRow Formats[] = {
    {"L4", 4, DecodeL4},           {"L8", 8, DecodeL8},          {"A4", 4, DecodeA4},
    {"A8", 8, DecodeA8},           {"La4", 8, DecodeLa4},        {"La8", 16, DecodeLa8},
    {"Hilo8", 16, DecodeHilo8},    {"Rgb565", 16, DecodeRgb565}, {"Rgb8", 24, DecodeRgb8},
    {"Rgb5_a1", 16, DecodeRgb5A1}, {"Rgba4", 16, DecodeRgba4},   {"Rgba8", 32, DecodeRgba8},
    {"Etc1", 4, nullptr},          {"Etc1_a4", 8, nullptr},
};

const FormatRow* FindFormat(const std::string& word)
{
    const auto found = std::ranges::find(Formats, std::string_view(word), &FormatRow::Word);
    return found == std::end(Formats) ? nullptr : &*found;
}

/// Every second bit of a number below 64, from bit 0 on.
std::size_t EverySecondBit(std::size_t number)
{
    return (number & 1U) | (number >> 1 & 2U) | (number >> 2 & 4U);
}

} // namespace

int BitsPerPixel(const std::string& format)
{
    const FormatRow* const row = FindFormat(format);
    return row == nullptr ? 0 : row->Bits;
}

bool CanDecode(const std::string& format)
{
    const FormatRow* const row = FindFormat(format);
    return row != nullptr && row->Decode != nullptr;
}

std::vector<std::uint8_t> DecodeLevel(const std::string& format, const TextureLevel& level)
{
    constexpr std::size_t TileSide = 8;
    constexpr std::size_t MostSide = 4096;
    if (!CanDecode(format) || level.Width > MostSide || level.Height > MostSide) {
        return {};
    }
    const FormatRow& row = *FindFormat(format);
    const std::size_t count = level.Width * level.Height;
    if (level.Data.size() < count * static_cast<std::size_t>(row.Bits) / 8 || count % 2 != 0) {
        return {};
    }
    std::vector<std::uint8_t> pixels(count * 4);
    std::size_t next = 0;
    // Rows of tiles from the top left; in a tile the pixels follow a Z curve. Of a tile that hangs over an
    // edge the pixels inside are stored only.
    for (std::size_t top = 0; top < level.Height; top += TileSide) {
        for (std::size_t left = 0; left < level.Width; left += TileSide) {
            for (std::size_t i = 0; i < TileSide * TileSide; ++i) {
                const std::size_t x = left + EverySecondBit(i);
                const std::size_t y = top + EverySecondBit(i >> 1);
                if (x < level.Width && y < level.Height) {
                    const Pixel pixel = row.Decode(level.Data, next++);
                    std::ranges::copy(pixel, pixels.begin() +
                                                 static_cast<std::ptrdiff_t>(4 * (y * level.Width + x)));
                }
            }
        }
    }
    return pixels;
}

} // namespace tq4x::reader
