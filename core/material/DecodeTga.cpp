#include "material/DecodeTga.h"

#include "material/ByteCursor.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace tq4x
{
namespace
{

using Rgba = std::array<std::uint8_t, 4>;

constexpr Rgba OpaqueBlack = {0, 0, 0, 255};
constexpr std::size_t LongestPacket = 128;

std::uint8_t WidenFiveBits(int bits)
{
    const int channel = bits & 31;
    return static_cast<std::uint8_t>(channel << 3 | channel >> 2);
}

/// 15 and 16 bits alike: the highest bit means nothing.
Rgba FromFiveBits(const std::uint8_t* bytes)
{
    const int word = Word16(bytes);
    return {WidenFiveBits(word >> 10), WidenFiveBits(word >> 5), WidenFiveBits(word), 255};
}

Rgba FromGrey(const std::uint8_t* bytes)
{
    return {bytes[0], bytes[0], bytes[0], 255};
}

Rgba FromBgr(const std::uint8_t* bytes)
{
    return {bytes[2], bytes[1], bytes[0], 255};
}

Rgba FromBgra(const std::uint8_t* bytes)
{
    return {bytes[2], bytes[1], bytes[0], bytes[3]};
}

/// In a map, unlike in a picture, one byte is the alpha too.
Rgba FromMapByte(const std::uint8_t* bytes)
{
    return {bytes[0], bytes[0], bytes[0], bytes[0]};
}

std::size_t BytesOf(std::uint8_t bits)
{
    return (static_cast<std::size_t>(bits) + 7) / 8;
}

struct ColorMap
{
    std::size_t First = 0;
    std::vector<Rgba> Entries; ///< from `First` on

    Rgba At(std::size_t index) const
    {
        const bool isInside = index >= First && index - First < Entries.size();
        return isInside ? Entries[index - First] : OpaqueBlack;
    }
};

Rgba ReadMapEntry(const std::uint8_t* bytes, std::uint8_t bits)
{
    switch (bits) {
    case 8:
        return FromMapByte(bytes);
    case 24:
        return FromBgr(bytes);
    case 32:
        return FromBgra(bytes);
    default:
        return FromFiveBits(bytes);
    }
}

/// Reads the map of a colour-mapped picture, passes over any other map.
LogResult ReadMap(ColorMap& map, ByteCursor& in, const TgaHeader& header, const std::string& path)
{
    if (header.MapType == 0 || header.MapLength == 0)
        return {};
    if (header.IsColorMapped() && !IsTgaBits(header.MapEntryBits))
        return TgaFailure("invalid bit per pixel", path);
    const std::size_t entrySize = BytesOf(header.MapEntryBits);
    if (!in.Has(entrySize * header.MapLength))
        return TgaEndsEarly(path);
    const std::uint8_t* bytes = in.Take(entrySize * header.MapLength);
    if (!header.IsColorMapped())
        return {};
    map.First = header.MapFirst;
    map.Entries.resize(header.MapLength);
    for (Rgba& entry : map.Entries) {
        entry = ReadMapEntry(bytes, header.MapEntryBits);
        bytes += entrySize;
    }
    return {};
}

/// Hands out the places of a picture in the order in which the file holds its pixels.
class PixelPlaces
{
public:
    PixelPlaces(std::vector<std::uint8_t>& pixels, const TgaHeader& header)
        : m_pixels(pixels),
          m_header(header),
          m_left(pixels.size() / sizeof(Rgba)),
          m_step(header.IsRightToLeft() ? std::size_t{0} - sizeof(Rgba) : sizeof(Rgba))
    {
        StartRow();
    }

    /// Pixels that are still to come.
    std::size_t Left() const { return m_left; }

    void Put(const Rgba& pixel)
    {
        std::memcpy(&m_pixels[m_place], pixel.data(), sizeof(Rgba));
        --m_left;
        if (--m_leftInRow == 0)
            NextRow();
        else
            m_place += m_step;
    }

private:
    void StartRow()
    {
        const std::int32_t row = m_header.IsTopToBottom() ? m_row : m_header.Height - 1 - m_row;
        const std::int32_t column = m_header.IsRightToLeft() ? m_header.Width - 1 : 0;
        m_place = (static_cast<std::size_t>(row) * m_header.Width + column) * sizeof(Rgba);
        m_leftInRow = m_header.Width;
    }

    void NextRow()
    {
        m_row += static_cast<std::int32_t>(m_header.Interleave());
        if (m_row >= m_header.Height)
            m_row = ++m_firstRow;
        if (m_left > 0)
            StartRow();
    }

    std::vector<std::uint8_t>& m_pixels;
    const TgaHeader& m_header;
    std::size_t m_left;
    std::size_t m_step;      ///< from a pixel to the next in its row, modulo the range
    std::size_t m_place = 0; ///< of the next pixel, in bytes
    std::int32_t m_leftInRow = 0;
    std::int32_t m_row = 0;      ///< in the order of the file, before the flip
    std::int32_t m_firstRow = 0; ///< where the present pass of an interleaved picture began
};

/// Pixels that follow each other in the file, or one that stands for all of them.
struct Packet
{
    std::size_t Count = 0;
    bool IsRun = false;
};

Packet ReadPacketHead(std::uint8_t head)
{
    return {static_cast<std::size_t>(head & 127) + 1, (head & 128) != 0};
}

/// Fills the places with pixels that `read` makes of `pixelSize` bytes each. False if the file ends before.
template<typename ReadPixel>
bool ReadPixels(PixelPlaces& places, ByteCursor& in, bool isRunLengthCoded, std::size_t pixelSize,
                ReadPixel read)
{
    while (places.Left() > 0) {
        Packet packet{places.Left(), false};
        if (isRunLengthCoded) {
            if (!in.Has(1))
                return false;
            packet = ReadPacketHead(*in.Take(1));
        }
        const std::size_t count = std::min(packet.Count, places.Left());
        if (!in.Has(packet.IsRun ? pixelSize : count * pixelSize))
            return false;
        if (packet.IsRun) {
            const Rgba pixel = read(in.Take(pixelSize));
            for (std::size_t i = 0; i < count; ++i)
                places.Put(pixel);
        } else {
            for (std::size_t i = 0; i < count; ++i)
                places.Put(read(in.Take(pixelSize)));
        }
    }
    return true;
}

std::size_t PixelSize(const TgaHeader& header)
{
    if (header.IsColorMapped())
        return header.PixelBits == 8 ? 1 : 2;
    return BytesOf(header.PixelBits);
}

bool ReadMappedPixels(PixelPlaces& places, ByteCursor& in, const TgaHeader& header, const ColorMap& map)
{
    const bool isRunLengthCoded = header.IsRunLengthCoded();
    if (header.PixelBits == 8)
        return ReadPixels(places, in, isRunLengthCoded, 1,
                          [&](const std::uint8_t* bytes) { return map.At(bytes[0]); });
    return ReadPixels(places, in, isRunLengthCoded, 2,
                      [&](const std::uint8_t* bytes) { return map.At(Word16(bytes)); });
}

/// Each kind of pixel has a loop of its own: lambdas, unlike the functions that they call, differ in type.
bool ReadPlainPixels(PixelPlaces& places, ByteCursor& in, const TgaHeader& header)
{
    const bool isRunLengthCoded = header.IsRunLengthCoded();
    switch (header.PixelBits) {
    case 8:
        return ReadPixels(places, in, isRunLengthCoded, 1,
                          [](const std::uint8_t* bytes) { return FromGrey(bytes); });
    case 24:
        return ReadPixels(places, in, isRunLengthCoded, 3,
                          [](const std::uint8_t* bytes) { return FromBgr(bytes); });
    case 32:
        return ReadPixels(places, in, isRunLengthCoded, 4,
                          [](const std::uint8_t* bytes) { return FromBgra(bytes); });
    default:
        return ReadPixels(places, in, isRunLengthCoded, 2,
                          [](const std::uint8_t* bytes) { return FromFiveBits(bytes); });
    }
}

/// Bytes without which no file holds so many pixels.
std::size_t LeastBytes(const TgaHeader& header, std::size_t pixelCount)
{
    if (!header.IsRunLengthCoded())
        return pixelCount * PixelSize(header);
    const std::size_t packets = (pixelCount + LongestPacket - 1) / LongestPacket;
    return packets * (1 + PixelSize(header));
}

} // namespace

LogResult DecodeTga(std::vector<std::uint8_t>& pixels, const TgaHeader& header,
                    std::span<const std::uint8_t> file, const std::string& path)
{
    pixels = std::vector<std::uint8_t>();
    ByteCursor in(file, TgaHeaderSize + header.IdLength);
    ColorMap map;
    LogResult result = ReadMap(map, in, header, path);
    if (result.Status != 0)
        return result;
    const std::size_t pixelCount = static_cast<std::size_t>(header.Width) * header.Height;
    if (!in.Has(LeastBytes(header, pixelCount)))
        return TgaEndsEarly(path);
    pixels.resize(pixelCount * sizeof(Rgba));
    PixelPlaces places(pixels, header);
    const bool isWhole = header.IsColorMapped() ? ReadMappedPixels(places, in, header, map)
                                                : ReadPlainPixels(places, in, header);
    if (isWhole)
        return {};
    pixels = std::vector<std::uint8_t>();
    return TgaEndsEarly(path);
}

} // namespace tq4x
