#pragma once

#include <array>
#include <cstdint>

#include "gltf/DecodeImage.h"
#include "gltf/GltfDocument.h"

namespace tq4x::gltf
{

/// The values of a material for a shader of diffuse colour, highlight and glow.
struct Shading
{
    std::array<double, 3> Diffuse = {1.0, 1.0, 1.0};
    double Transparency = 0.0; ///< 1 less the alpha; 0 for opaque materials, whatever their alpha is
    std::array<double, 3> Specular = {0.04, 0.04, 0.04};
    double Shininess = 1.0; ///< exponent of the cosine between the normal and the half vector
    std::array<double, 3> Emission = {0.0, 0.0, 0.0};
    double EmissionScale = 1.0;
};

/// Metalness and roughness of a material as it appears on the whole.
struct SurfaceFinish
{
    double Metallic = 1.0;
    double Roughness = 1.0;
};

/// The factors of the material times the means of its texture: metalness is the blue channel, roughness the
/// green one. `picture` is that texture, nullptr if there is none.
[[nodiscard]] SurfaceFinish ComputeFinish(const Material& material, const Picture* picture);

/// Highlights: colour 0.04 * (1 - m) + base * m for metalness m, the reflectance of the surface seen straight
/// on; exponent 2 / r^4 - 2 for roughness r, which gives a cosine power the width of a microfacet surface of
/// that roughness, held within 1 and `MaxShininess`. The diffuse colour is the base colour also for metals:
/// nothing else would show, since there are no reflections of the surroundings.
/// A material of specular colour and glossiness brings its highlight's colour itself; its roughness is
/// 1 - glossiness.
[[nodiscard]] Shading ComputeShading(const Material& material, const SurfaceFinish& finish);

inline constexpr double MaxShininess = 300.0;

} // namespace tq4x::gltf
