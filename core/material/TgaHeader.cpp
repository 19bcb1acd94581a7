#include "material/TgaHeader.h"

#include "material/ByteCursor.h"

namespace tq4x
{
namespace
{

constexpr std::uint8_t MappedType = 1;
constexpr std::uint8_t GreyType = 3;
constexpr std::uint8_t RunLengthBit = 8;

std::uint8_t TypeWithoutCoding(std::uint8_t imageType)
{
    return imageType & static_cast<std::uint8_t>(~RunLengthBit);
}

bool IsKnownType(std::uint8_t imageType)
{
    const std::uint8_t plain = TypeWithoutCoding(imageType);
    return plain >= MappedType && plain <= GreyType;
}

} // namespace

bool TgaHeader::IsColorMapped() const
{
    return MapType != 0 && TypeWithoutCoding(ImageType) == MappedType;
}

TgaInterleave TgaHeader::Interleave() const
{
    switch (Descriptor >> 6) {
    case 1:
        return TgaInterleave::TwoWay;
    case 2:
        return TgaInterleave::FourWay;
    default:
        return TgaInterleave::None;
    }
}

bool TgaHeader::HasAlpha() const
{
    if (IsColorMapped())
        return MapEntryBits == 32;
    if (TypeWithoutCoding(ImageType) == GreyType && PixelBits == 8)
        return false;
    return (Descriptor & 0x0F) != 0;
}

bool IsTgaBits(std::uint8_t bits)
{
    return bits == 8 || bits == 15 || bits == 16 || bits == 24 || bits == 32;
}

LogResult TgaFailure(std::string_view reason, const std::string& path)
{
    return {1, "TGA file is wrong: (" + std::string(reason) + "): " + path};
}

LogResult TgaEndsEarly(const std::string& path)
{
    return TgaFailure("unexpected end of file", path);
}

LogResult ReadTgaHeader(TgaHeader& header, std::span<const std::uint8_t> file, const std::string& path)
{
    if (file.size() < TgaHeaderSize)
        return TgaEndsEarly(path);
    header.IdLength = file[0];
    header.MapType = file[1];
    header.ImageType = file[2];
    header.MapFirst = Word16(&file[3]);
    header.MapLength = Word16(&file[5]);
    header.MapEntryBits = file[7];
    header.Width = Word16(&file[12]);
    header.Height = Word16(&file[14]);
    header.PixelBits = file[16];
    header.Descriptor = file[17];
    if (!IsKnownType(header.ImageType))
        return TgaFailure("invalid image type", path);
    if (!IsTgaBits(header.PixelBits))
        return TgaFailure("invalid bit per pixel", path);
    return {};
}

} // namespace tq4x
