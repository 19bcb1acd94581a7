#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tq4x::test
{

using Bytes = std::vector<std::uint8_t>;

inline void Append(Bytes& bytes, std::string_view text)
{
    bytes.insert(bytes.end(), text.begin(), text.end());
}

inline void Append(Bytes& bytes, const Bytes& more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

/// Appends the low `count` bytes of a number, lowest first.
inline void AppendLittle(Bytes& bytes, std::uint64_t number, int count)
{
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(number >> 8 * i));
}

/// A TGA file as its parts, sound or not: every field is written as it is.
struct TgaFile
{
    std::uint8_t MapType = 0;
    std::uint8_t ImageType = 2;
    std::uint16_t MapFirst = 0;
    std::uint16_t MapLength = 0;
    std::uint8_t MapEntryBits = 0;
    std::uint16_t Width = 8;
    std::uint16_t Height = 8;
    std::uint8_t PixelBits = 24;
    std::uint8_t Descriptor = 0;
    Bytes Id;
    Bytes Map;
    Bytes Data;
    Bytes Tail; ///< behind the pixels: footer, blocks

    Bytes Build() const
    {
        Bytes file = {static_cast<std::uint8_t>(Id.size()), MapType, ImageType};
        AppendLittle(file, MapFirst, 2);
        AppendLittle(file, MapLength, 2);
        file.push_back(MapEntryBits);
        AppendLittle(file, 0, 4); // origin, not read
        AppendLittle(file, Width, 2);
        AppendLittle(file, Height, 2);
        file.push_back(PixelBits);
        file.push_back(Descriptor);
        for (const Bytes* part : {&Id, &Map, &Data, &Tail})
            Append(file, *part);
        return file;
    }
};

/// A block of a texture tool: tag, size, payload.
inline Bytes TgaBlock(std::string_view tag, std::string_view payload)
{
    Bytes block;
    Append(block, tag);
    AppendLittle(block, payload.size() + 12, 4);
    Append(block, payload);
    return block;
}

inline Bytes TgaBlock(std::string_view tag, const Bytes& payload)
{
    return TgaBlock(tag, std::string_view(reinterpret_cast<const char*>(payload.data()), payload.size()));
}

/// The ID field by which a texture tool marks its files.
inline Bytes TgaMarker(std::uint32_t offset)
{
    Bytes id;
    Append(id, std::string_view("TQ4X_Tga Ver1.0\0", 16));
    AppendLittle(id, offset, 4);
    return id;
}

/// A file with blocks directly behind its marker and no pixels at all.
inline TgaFile TgaWithBlocks(std::uint16_t width, std::uint16_t height, const std::vector<Bytes>& blocks)
{
    TgaFile file;
    file.Width = width;
    file.Height = height;
    file.Id = TgaMarker(18 + 20);
    for (const Bytes& block : blocks)
        Append(file.Tail, block);
    return file;
}

/// The rows of a picture, counted from its top, in the order in which a file with this descriptor holds them.
inline std::vector<std::size_t> TgaRowOrder(std::size_t height, std::uint8_t descriptor)
{
    const std::size_t ways = descriptor >> 6 == 1 ? 2 : descriptor >> 6 == 2 ? 4 : 1;
    std::vector<std::size_t> rows;
    for (std::size_t first = 0; first < ways; ++first)
        for (std::size_t row = first; row < height; row += ways)
            rows.push_back((descriptor & 0x20) != 0 ? row : height - 1 - row);
    return rows;
}

/// The stored pixels of a picture (`pixelSize` bytes each, rows from the top, from left to right) in the
/// order of a file with this descriptor.
inline std::vector<Bytes> TgaPixelOrder(const Bytes& stored, std::size_t width, std::size_t height,
                                        std::size_t pixelSize, std::uint8_t descriptor)
{
    std::vector<Bytes> pixels;
    for (const std::size_t row : TgaRowOrder(height, descriptor)) {
        for (std::size_t i = 0; i < width; ++i) {
            const std::size_t column = (descriptor & 0x10) != 0 ? width - 1 - i : i;
            const auto first =
                stored.begin() + static_cast<std::ptrdiff_t>((row * width + column) * pixelSize);
            pixels.emplace_back(first, first + static_cast<std::ptrdiff_t>(pixelSize));
        }
    }
    return pixels;
}

inline Bytes TgaPlainData(const std::vector<Bytes>& pixels)
{
    Bytes data;
    for (const Bytes& pixel : pixels)
        Append(data, pixel);
    return data;
}

/// Run-length codes pixels in packets of random kind and length, which cross rows as they come.
inline Bytes TgaRunLengthData(const std::vector<Bytes>& pixels, std::mt19937& random)
{
    Bytes data;
    for (std::size_t i = 0; i < pixels.size();) {
        std::size_t run = 1;
        while (run < 128 && i + run < pixels.size() && pixels[i + run] == pixels[i])
            ++run;
        const bool isRun = random() % 4 != 0 && run > 1;
        const std::size_t most = isRun ? run : std::min<std::size_t>(128, pixels.size() - i);
        const std::size_t count = 1 + random() % most;
        data.push_back(static_cast<std::uint8_t>((isRun ? 128 : 0) + count - 1));
        for (std::size_t k = 0; k < (isRun ? 1 : count); ++k)
            Append(data, pixels[i + k]);
        i += count;
    }
    return data;
}

} // namespace tq4x::test
