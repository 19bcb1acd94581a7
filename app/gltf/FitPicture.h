#pragma once

#include "gltf/DecodeImage.h"

namespace tq4x::gltf
{

/// The power of two from 8 to 1024 that is nearest to a length by ratio; of two equally near the larger one.
[[nodiscard]] std::uint32_t NearestTextureSide(std::uint32_t length);

/// The picture with both sides brought to the nearest size that a texture can have. Each new pixel is the
/// mean of the area that it covers, colours weighted by their alpha, so that what is transparent does not
/// bleed.
[[nodiscard]] Picture FitPicture(const Picture& picture);

} // namespace tq4x::gltf
