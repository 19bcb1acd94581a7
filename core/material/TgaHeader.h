#pragma once

#include "pipeline/MessageLog.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tq4x
{

/// Bytes before the ID field.
inline constexpr std::size_t TgaHeaderSize = 18;

/// How the rows of a picture follow each other in the file.
enum class TgaInterleave : std::int32_t
{
    None = 1,
    TwoWay = 2,
    FourWay = 4,
};

/// The fields of a TGA header that are read.
struct TgaHeader
{
    std::uint8_t IdLength = 0;
    std::uint8_t MapType = 0; ///< not 0: a colour map stands before the pixels
    std::uint8_t ImageType = 0;
    std::uint32_t MapFirst = 0; ///< index of the first entry in the file
    std::uint32_t MapLength = 0;
    std::uint8_t MapEntryBits = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    std::uint8_t PixelBits = 0;
    std::uint8_t Descriptor = 0;

    /// Pixels are indices into the map. Pictures of other types may carry a map, which is passed over.
    bool IsColorMapped() const;

    bool IsRunLengthCoded() const { return ImageType >= 9; }

    bool IsTopToBottom() const { return (Descriptor & 0x20) != 0; }

    bool IsRightToLeft() const { return (Descriptor & 0x10) != 0; }

    TgaInterleave Interleave() const;

    /// By the entries of the map, or by the alpha bits; never for grey pictures of one byte a pixel.
    bool HasAlpha() const;
};

/// True for the sizes in bits that pixels and map entries may have: 8, 15, 16, 24 and 32.
bool IsTgaBits(std::uint8_t bits);

/// "TGA file is wrong: (reason): path", with status 1.
LogResult TgaFailure(std::string_view reason, const std::string& path);

/// Failure of a file that ends inside its header, map or pixels.
LogResult TgaEndsEarly(const std::string& path);

/// Reads the header and tests the image type and the bits of a pixel. Sizes are not tested here.
LogResult ReadTgaHeader(TgaHeader& header, std::span<const std::uint8_t> file, const std::string& path);

} // namespace tq4x
