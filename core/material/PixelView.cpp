#include "material/PixelView.h"

#include "material/TextureImage.h"

#include <array>

namespace tq4x
{
namespace
{

/// Place in the cross, in faces.
struct FacePlace
{
    std::size_t Column = 0;
    std::size_t Row = 0;
};

constexpr std::array<FacePlace, 6> CubePlaces = {{{2, 1}, {0, 1}, {1, 0}, {1, 2}, {1, 1}, {3, 1}}};

} // namespace

std::vector<PixelView> FaceViews(const TextureImage& image)
{
    const std::size_t width = image.Width;
    const std::size_t height = image.Height;
    const std::size_t pitch = image.FileWidth * BytesPerPixel;
    if (!image.IsCube)
        return {{image.Pixels.data(), width, height, pitch}};
    std::vector<PixelView> faces;
    for (const FacePlace& place : CubePlaces) {
        const std::size_t start = place.Row * height * pitch + place.Column * width * BytesPerPixel;
        faces.push_back({image.Pixels.data() + start, width, height, pitch});
    }
    return faces;
}

} // namespace tq4x
