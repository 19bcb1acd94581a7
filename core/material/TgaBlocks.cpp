#include "material/TgaBlocks.h"

#include "material/AlphaKind.h"
#include "material/ByteCursor.h"
#include "material/TextureImage.h"
#include "material/TextureSize.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace tq4x
{
namespace
{

constexpr std::string_view Marker("TQ4X_Tga Ver1.0", 16); // with its terminator
constexpr std::size_t MarkerOffset = TgaHeaderSize;
constexpr std::size_t BlocksOffset = MarkerOffset + Marker.size();
constexpr std::size_t MarkedHeaderSize = BlocksOffset + 4;

constexpr std::size_t TagSize = 8;
constexpr std::size_t BlockHeadSize = TagSize + 4;

std::string_view TextAt(std::span<const std::uint8_t> bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

struct Block
{
    std::string_view Tag;
    std::span<const std::uint8_t> Payload; ///< cut at the end of the file
    bool IsCut = false;
};

Block BlockAt(std::span<const std::uint8_t> file, std::size_t start, std::uint32_t size)
{
    const std::span<const std::uint8_t> rest = file.subspan(start + BlockHeadSize);
    const std::size_t payload = size > BlockHeadSize ? size - BlockHeadSize : 0;
    return {TextAt(file.subspan(start, TagSize)), rest.first(std::min(payload, rest.size())),
            payload > rest.size()};
}

std::optional<std::int32_t> DigitValue(char digit)
{
    if (digit < '0' || digit > '9')
        return std::nullopt;
    return digit - '0';
}

/// Two bytes are a number of two digits; of any other text the first digit counts alone.
std::optional<std::int32_t> ReadMipmapSize(std::string_view text)
{
    std::int32_t value = 0;
    const std::string_view digits = text.substr(0, text.size() == 2 ? 2 : 1);
    if (digits.empty())
        return std::nullopt;
    for (const char c : digits) {
        const std::optional<std::int32_t> digit = DigitValue(c);
        if (!digit)
            return std::nullopt;
        value = value * 10 + *digit;
    }
    return value >= 1 && value <= MaximumMipmapSize ? std::optional(value) : std::nullopt;
}

LogResult TakeFormat(TextureImage& image, const Block& block)
{
    const std::string_view word = TextAt(block.Payload);
    const std::optional<TextureFormat> format = FindFormat(word);
    if (!format)
        return {1, "Texture format is wrong: " + std::string(word)};
    image.Format = *format;
    return {};
}

LogResult TakeMipmapSize(TextureImage& image, const Block& block)
{
    const std::string_view text = TextAt(block.Payload);
    const std::optional<std::int32_t> size = ReadMipmapSize(text);
    if (!size)
        return {1, "Mipmap size is wrong: " + std::string(text)};
    image.MipmapSize = *size;
    image.HasMipmap = *size > 1;
    return {};
}

/// Cut data is no data.
void TakeTextureData(TextureImage& image, const Block& block)
{
    image.TextureData.clear();
    if (!block.IsCut)
        image.TextureData.assign(block.Payload.begin(), block.Payload.end());
    image.TextureDataSize = static_cast<std::int32_t>(image.TextureData.size());
}

/// A tag that is not known is passed over.
LogResult TakeBlock(TextureImage& image, const Block& block)
{
    if (block.Tag == "tq4x_tfm")
        return TakeFormat(image, block);
    if (block.Tag == "tq4x_mps")
        return TakeMipmapSize(image, block);
    if (block.Tag == "tq4x_cub")
        image.IsCube = true;
    if (block.Tag == "tq4x_txd")
        TakeTextureData(image, block);
    return {};
}

/// Sizes are compared with what lay behind the first block, not with what is left.
LogResult WalkBlocks(TextureImage& image, std::span<const std::uint8_t> file)
{
    const auto first = static_cast<std::size_t>(image.AdditionalInfoOffset);
    const std::size_t span = file.size() - first;
    for (std::size_t start = first; start + BlockHeadSize <= file.size();) {
        const std::uint32_t size = Word32(&file[start + TagSize]);
        const Block block = BlockAt(file, start, size);
        if (size == 0 || size > span || block.Tag == "tq4x_end")
            break;
        LogResult result = TakeBlock(image, block);
        if (result.Status != 0)
            return result;
        start += size;
    }
    return {};
}

/// A picture without area has no data either, whatever the block holds.
bool HoldsAllData(const TextureImage& image)
{
    return image.Width > 0 && image.Height > 0 && image.TextureData.size() >= TextureByteCount(image);
}

LogResult BlocksAreWrong(const TextureImage& image)
{
    return {1, "Additional information is wrong: " + image.Path};
}

} // namespace

std::optional<std::uint32_t> FindTgaBlocks(const TgaHeader& header, std::span<const std::uint8_t> file)
{
    if (header.IdLength < Marker.size() + 4 || file.size() < MarkedHeaderSize)
        return std::nullopt;
    if (TextAt(file.subspan(MarkerOffset, Marker.size())) != Marker)
        return std::nullopt;
    const std::uint32_t offset = Word32(&file[BlocksOffset]);
    if (offset < MarkedHeaderSize || offset >= file.size())
        return std::nullopt;
    return offset;
}

LogResult ReadTgaBlocks(TextureImage& image, std::span<const std::uint8_t> file)
{
    image.Width = image.FileWidth;
    image.Height = image.FileHeight;
    LogResult result = WalkBlocks(image, file);
    if (result.Status != 0)
        return result;
    if (image.TextureData.empty())
        return BlocksAreWrong(image);
    if (image.IsCube) {
        image.Width = image.FileWidth / 4;
        image.Height = image.FileHeight / 3;
    }
    if (!HoldsAllData(image))
        return BlocksAreWrong(image);
    image.AlphaKind = AlphaKindOfData(image.Format, image.TextureData);
    return {};
}

} // namespace tq4x
