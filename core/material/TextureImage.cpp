#include "material/TextureImage.h"

#include "material/AlphaKind.h"
#include "material/ChooseFormat.h"
#include "material/EncodeTexture.h"
#include "material/PixelView.h"
#include "material/ReadFile.h"
#include "material/ReadTga.h"
#include "material/TextureSize.h"
#include "pipeline/PathText.h"
#include "pipeline/TextHelpers.h"

#include <algorithm>
#include <utility>

namespace tq4x
{
namespace
{

std::uint64_t PixelByteCount(std::int32_t width, std::int32_t height)
{
    const bool isArea = width > 0 && height > 0;
    return isArea ? BytesPerPixel * static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height)
                  : 0;
}

char LowerCase(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsTgaPath(const std::string& path)
{
    std::string extension = FileExtension(path);
    std::ranges::transform(extension, extension.begin(), LowerCase);
    return extension == ".tga";
}

} // namespace

void TextureImage::Clear()
{
    *this = TextureImage();
}

LogResult TextureImage::Load(const std::string& path, TextureUsage usage, bool generate)
{
    const std::string source = path; // may be this record's own
    Clear();
    Path = source;
    BaseName = FileStem(source);
    Name = LegalName(BaseName);
    if (!IsTgaPath(source))
        return {1, "Image type is not supported: " + source};
    FileContent file = ReadFile(source);
    if (file.Result.Status != 0)
        return std::move(file.Result);
    return ReadTga(*this, file.Bytes(), usage, generate);
}

void TextureImage::SetPixels(std::span<const std::uint8_t> rgba, std::int32_t width, std::int32_t height,
                             bool hasAlpha)
{
    FileWidth = width;
    FileHeight = height;
    HasAlpha = hasAlpha;
    if (rgba.size() == PixelByteCount(width, height))
        Pixels.assign(rgba.begin(), rgba.end());
    else
        Pixels = std::vector<std::uint8_t>();
}

LogResult TextureImage::Convert(TextureUsage usage, bool generate)
{
    if (Pixels.empty() || Pixels.size() != PixelByteCount(FileWidth, FileHeight))
        return {1, "No texture data: " + Path};
    LogResult result = TestTextureSize(*this);
    if (result.Status != 0)
        return result;
    Usage = usage;
    const std::vector<PixelView> faces = FaceViews(*this);
    const bool judgesAlpha = usage == TextureUsage::Color && HasAlpha;
    AlphaKind = judgesAlpha ? AlphaKindOfPixels(faces) : tq4x::AlphaKind::None;
    Format = ChooseFormat(usage, AlphaKind, faces);
    HasMipmap = MipmapSize > 1;
    if (MipmapSize < 1 || MipmapSize > MaximumMipmapSize)
        return {1, "Mipmap size is wrong: " + std::to_string(MipmapSize)};
    if (generate)
        EncodeTexture(*this);
    return {};
}

std::string_view TextureImage::FormatName() const
{
    return FormatWord(Format);
}

} // namespace tq4x
