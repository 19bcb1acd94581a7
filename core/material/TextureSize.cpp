#include "material/TextureSize.h"

#include <bit>
#include <string>

namespace tq4x
{
namespace
{

constexpr std::int32_t MinimumFaceSize = 8;

bool IsPowerOfTwo(std::int32_t size)
{
    return size > 0 && std::has_single_bit(static_cast<std::uint32_t>(size));
}

bool IsFaceSize(std::int32_t size)
{
    return IsPowerOfTwo(size) && size >= MinimumFaceSize && size <= MaximumFaceSize;
}

/// The upper limit takes no part, so that the message about a cube that is too large names its face.
bool IsCross(std::int32_t width, std::int32_t height)
{
    const std::int32_t face = width / 4;
    return width % 4 == 0 && height % 3 == 0 && face == height / 3 && IsPowerOfTwo(face) &&
           face >= MinimumFaceSize;
}

} // namespace

std::size_t FaceCount(const TextureImage& image)
{
    return image.IsCube ? 6 : 1;
}

std::size_t LevelByteCount(TextureFormat format, std::int32_t width, std::int32_t height)
{
    return static_cast<std::size_t>(width) * height * BitsPerPixel(format) / 8;
}

std::size_t TextureByteCount(const TextureImage& image)
{
    std::size_t count = 0;
    std::int32_t width = image.Width;
    std::int32_t height = image.Height;
    for (std::int32_t level = 0; level < image.MipmapSize; ++level) {
        count += LevelByteCount(image.Format, width, height);
        width /= 2;
        height /= 2;
    }
    return count * FaceCount(image);
}

LogResult TestTextureSize(TextureImage& image)
{
    image.IsCube = IsCross(image.FileWidth, image.FileHeight);
    image.Width = image.IsCube ? image.FileWidth / 4 : image.FileWidth;
    image.Height = image.IsCube ? image.FileHeight / 3 : image.FileHeight;
    if (IsFaceSize(image.Width) && IsFaceSize(image.Height))
        return {};
    return {1, "Texture size is wrong: " + image.Path + " (" + std::to_string(image.Width) + " x " +
                   std::to_string(image.Height) + ")"};
}

} // namespace tq4x
