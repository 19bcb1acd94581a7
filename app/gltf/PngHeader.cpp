#include "gltf/PngHeader.h"
#include "gltf/DecodeImage.h"

namespace tq4x::gltf
{
namespace
{

constexpr std::size_t SignatureSize = 8;
constexpr std::size_t HeaderSize = 13; // bytes of the first part
constexpr std::size_t PartFrame = 12;  // length, name and checksum of a part
constexpr unsigned PlainGray = 0;      // a colour type
constexpr unsigned PlainColor = 2;     // another
constexpr std::size_t ColorTypeAt = 9; // in the first part
constexpr const char* EndText = "The PNG file is damaged: unexpected end of file.";

using Bytes = std::span<const std::uint8_t>;

std::uint32_t ReadBig(Bytes bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8 | bytes[at + i];
    }
    return value;
}

unsigned ReadBigShort(Bytes bytes, std::size_t at)
{
    return static_cast<unsigned>(bytes[at]) << 8 | bytes[at + 1];
}

/// A part of the file: its name and what it holds. Nothing where the file ends before it does.
struct Part
{
    std::string Name;
    Bytes Data;
};

std::optional<Part> TakePart(Bytes& rest)
{
    if (rest.size() < PartFrame) {
        return std::nullopt;
    }
    const std::size_t length = ReadBig(rest, 0);
    if (length > rest.size() - PartFrame) {
        return std::nullopt;
    }
    const Part part{std::string(rest.begin() + 4, rest.begin() + 8), rest.subspan(8, length)};
    rest = rest.subspan(PartFrame + length);
    return part;
}

std::optional<std::array<unsigned, 3>> ReadColor(unsigned colorType, Bytes data)
{
    if (colorType == PlainGray && data.size() == 2) {
        const unsigned gray = ReadBigShort(data, 0);
        return std::array{gray, gray, gray};
    }
    if (colorType == PlainColor && data.size() == 6) {
        return std::array{ReadBigShort(data, 0), ReadBigShort(data, 2), ReadBigShort(data, 4)};
    }
    return std::nullopt;
}

} // namespace

PngHeader ReadPngHeader(Bytes file)
{
    Bytes rest = file.subspan(SignatureSize);
    PngHeader header;
    const std::optional<Part> first = TakePart(rest);
    if (!first || first->Name != "IHDR" || first->Data.size() != HeaderSize) {
        header.Error = EndText;
        return header;
    }
    header.Error = CheckPictureSize(ReadBig(first->Data, 0), ReadBig(first->Data, 4));
    const unsigned colorType = first->Data[ColorTypeAt];
    std::optional<Part> part = TakePart(rest);
    for (; part && part->Name != "IEND"; part = TakePart(rest)) {
        if (part->Name == "tRNS") {
            header.TransparentColor = ReadColor(colorType, part->Data);
        }
    }
    if (!part && header.Error.empty()) {
        header.Error = EndText;
    }
    return header;
}

} // namespace tq4x::gltf
