#pragma once

#include "material/TextureImage.h"

#include <cstddef>
#include <cstdint>

namespace tq4x
{

/// Largest side of a face in pixels.
inline constexpr std::int32_t MaximumFaceSize = 1024;

/// Largest picture in a file that can pass the size test: the cross of a cube, four faces wide, three high.
inline constexpr std::int32_t MaximumFileWidth = 4 * MaximumFaceSize;
inline constexpr std::int32_t MaximumFileHeight = 3 * MaximumFaceSize;

/// Faces of a texture: 1, or 6 of a cube.
std::size_t FaceCount(const TextureImage& image);

/// Bytes of one encoded level.
std::size_t LevelByteCount(TextureFormat format, std::int32_t width, std::int32_t height);

/// Bytes of all faces with all their levels.
std::size_t TextureByteCount(const TextureImage& image);

/// Sets `IsCube`, `Width` and `Height` from the size in the file and tests them: sides are powers of two from
/// 8 to 1024, and a cube is a cross of such squares. Else "Texture size is wrong: " with path and size.
LogResult TestTextureSize(TextureImage& image);

} // namespace tq4x
