#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tq4x
{

struct TextureImage;

/// Bytes of a pixel before it is encoded: R, G, B, A.
inline constexpr std::size_t BytesPerPixel = 4;

/// A rectangle of R, G, B, A pixels inside a picture that somebody else owns.
struct PixelView
{
    const std::uint8_t* Pixels = nullptr;
    std::size_t Width = 0;
    std::size_t Height = 0;
    std::size_t Pitch = 0; ///< bytes from a row to the next

    const std::uint8_t* Row(std::size_t y) const { return Pixels + y * Pitch; }
};

/// The faces of a texture whose size was tested, in the order of the files: the whole picture, or of a cube
/// +X, -X, +Y, -Y, +Z, -Z, cut from the cross. What lies beside the cross belongs to no face.
std::vector<PixelView> FaceViews(const TextureImage& image);

} // namespace tq4x
