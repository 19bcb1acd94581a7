#pragma once

#include <array>

#include "ReadMaterial.h"

namespace tq4x::reader
{

/// What KHR_texture_transform says: coordinates, v downwards, are scaled, turned and moved.
struct TextureTransform
{
    std::array<double, 2> Offset = {0, 0};
    double Rotation = 0; ///< radians
    std::array<double, 2> Scale = {1, 1};
    bool IsExact = true; ///< false: a turn together with different scales, which glTF can't say
};

/// Of a coordinator, which says with coordinates p, v upwards:
///
///     looked up = S × R(−Rotate) × (p − T)
[[nodiscard]] TextureTransform ComputeTextureTransform(const TextureCoordinator& coordinator);

} // namespace tq4x::reader
