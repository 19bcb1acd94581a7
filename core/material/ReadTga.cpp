#include "material/ReadTga.h"

#include "material/DecodeTga.h"
#include "material/TextureSize.h"
#include "material/TgaBlocks.h"
#include "material/TgaHeader.h"

#include <optional>

namespace tq4x
{
namespace
{

/// Pictures without pixels are left to the size test too.
bool MayDecode(const TextureImage& image)
{
    const bool hasPixels = image.FileWidth > 0 && image.FileHeight > 0;
    return hasPixels && image.FileWidth <= MaximumFileWidth && image.FileHeight <= MaximumFileHeight;
}

} // namespace

LogResult ReadTga(TextureImage& image, std::span<const std::uint8_t> file, TextureUsage usage, bool generate)
{
    image.IsRawImage = false;
    TgaHeader header;
    LogResult result = ReadTgaHeader(header, file, image.Path);
    if (result.Status != 0)
        return result;
    image.FileWidth = header.Width;
    image.FileHeight = header.Height;
    image.HasAlpha = header.HasAlpha();
    if (const std::optional<std::uint32_t> blocks = FindTgaBlocks(header, file)) {
        image.HasAdditionalInfo = true;
        image.AdditionalInfoOffset = static_cast<std::int32_t>(*blocks);
        image.Usage = usage;
        return ReadTgaBlocks(image, file);
    }
    if (!MayDecode(image))
        return TestTextureSize(image);
    result = DecodeTga(image.Pixels, header, file, image.Path);
    if (result.Status != 0)
        return result;
    return image.Convert(usage, generate);
}

} // namespace tq4x
