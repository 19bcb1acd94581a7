#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tq4x::test
{

/// Colour types as the format numbers them.
enum class PngColor : std::uint8_t
{
    Gray = 0,
    Rgb = 2,
    Palette = 3,
    GrayAlpha = 4,
    RgbAlpha = 6,
};

struct PngOptions
{
    PngColor ColorType = PngColor::RgbAlpha;
    int Depth = 8;
    bool IsInterlaced = false;        ///< of 8-bit colour with alpha only
    bool HasTransparentColor = false; ///< the colour 7, or 7 7 7; of palettes the first entry
};

/// Writes PNG files without any library; pixels are stored uncompressed.
class PngBuilder
{
public:
    using Bytes = std::vector<std::uint8_t>;

    /// Rows as the format stores them; the palette, if any, holds (10 i, 20 i, 30 i).
    static Bytes Encode(std::uint32_t width, std::uint32_t height, const Bytes& rows,
                        const PngOptions& options)
    {
        PngBuilder builder;
        builder.m_file = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
        Bytes header;
        AppendNumber(header, width);
        AppendNumber(header, height);
        header.insert(header.end(),
                      {static_cast<std::uint8_t>(options.Depth), static_cast<std::uint8_t>(options.ColorType),
                       0, 0, static_cast<std::uint8_t>(options.IsInterlaced)});
        builder.AddPart("IHDR", header);
        builder.AddColors(options);
        const Bytes lines = options.IsInterlaced ? InterlacedLines(width, height, rows)
                                                 : Lines(rows, height == 0 ? 0 : rows.size() / height);
        builder.AddPart("IDAT", Stored(lines));
        builder.AddPart("IEND", {});
        return builder.m_file;
    }

private:
    static void AppendNumber(Bytes& bytes, std::uint32_t number)
    {
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes.push_back(static_cast<std::uint8_t>(number >> shift));
    }

    static std::uint32_t Checksum(const Bytes& bytes, std::size_t start)
    {
        std::uint32_t crc = ~0u;
        for (std::size_t i = start; i < bytes.size(); ++i) {
            crc ^= bytes[i];
            for (int bit = 0; bit < 8; ++bit)
                crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xedb88320u : 0u);
        }
        return ~crc;
    }

    void AddPart(std::string_view name, const Bytes& data)
    {
        AppendNumber(m_file, static_cast<std::uint32_t>(data.size()));
        const std::size_t start = m_file.size();
        m_file.insert(m_file.end(), name.begin(), name.end());
        m_file.insert(m_file.end(), data.begin(), data.end());
        AppendNumber(m_file, Checksum(m_file, start));
    }

    void AddColors(const PngOptions& options)
    {
        if (options.ColorType == PngColor::Palette) {
            Bytes palette;
            for (int i = 0; i < (options.Depth == 1 ? 2 : 4); ++i)
                for (const int step : {10, 20, 30})
                    palette.push_back(static_cast<std::uint8_t>(step * i));
            AddPart("PLTE", palette);
        }
        if (!options.HasTransparentColor)
            return;
        if (options.ColorType == PngColor::Palette)
            AddPart("tRNS", {0});
        else if (options.ColorType == PngColor::Gray)
            AddPart("tRNS", {0, 7});
        else
            AddPart("tRNS", {0, 7, 0, 7, 0, 7});
    }

    /// Each row behind the number of its filter: none.
    static Bytes Lines(const Bytes& rows, std::size_t rowSize)
    {
        Bytes lines;
        for (std::size_t at = 0; at < rows.size(); at += rowSize) {
            lines.push_back(0);
            lines.insert(lines.end(), rows.begin() + static_cast<std::ptrdiff_t>(at),
                         rows.begin() + static_cast<std::ptrdiff_t>(at + rowSize));
        }
        return lines;
    }

    /// The seven pictures that an interlaced one is made of.
    static Bytes InterlacedLines(std::uint32_t width, std::uint32_t height, const Bytes& rows)
    {
        constexpr struct
        {
            std::uint32_t X, Y, StepX, StepY;
        } passes[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                      {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};

        Bytes lines;
        for (const auto& pass : passes) {
            for (std::uint32_t y = pass.Y; y < height && pass.X < width; y += pass.StepY) {
                lines.push_back(0);
                for (std::uint32_t x = pass.X; x < width; x += pass.StepX)
                    for (std::size_t i = 0; i < 4; ++i)
                        lines.push_back(rows[(std::size_t{y} * width + x) * 4 + i]);
            }
        }
        return lines;
    }

    /// The compressed stream's form, in blocks that are stored as they are.
    static Bytes Stored(const Bytes& data)
    {
        constexpr std::size_t LargestBlock = 65535;
        Bytes stream = {0x78, 0x01};
        std::size_t at = 0;
        do {
            const std::size_t size = data.size() - at < LargestBlock ? data.size() - at : LargestBlock;
            stream.push_back(at + size == data.size() ? 1 : 0);
            for (const std::size_t number : {size, ~size}) {
                stream.push_back(static_cast<std::uint8_t>(number & 255u));
                stream.push_back(static_cast<std::uint8_t>(number >> 8 & 255u));
            }
            stream.insert(stream.end(), data.begin() + static_cast<std::ptrdiff_t>(at),
                          data.begin() + static_cast<std::ptrdiff_t>(at + size));
            at += size;
        } while (at < data.size());
        std::uint32_t low = 1;
        std::uint32_t high = 0;
        for (const std::uint8_t byte : data) {
            low = (low + byte) % 65521;
            high = (high + low) % 65521;
        }
        AppendNumber(stream, high << 16 | low);
        return stream;
    }

    Bytes m_file;
};

inline PngBuilder::Bytes EncodePng(std::uint32_t width, std::uint32_t height, const PngBuilder::Bytes& rows,
                                   const PngOptions& options = {})
{
    return PngBuilder::Encode(width, height, rows, options);
}

} // namespace tq4x::test
