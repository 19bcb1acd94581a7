#include "gltf/Shading.h"

#include <algorithm>
#include <cmath>

namespace tq4x::gltf
{
namespace
{

constexpr double DielectricReflectance = 0.04;

/// Mean of a channel, 0 to 1.
double MeanOf(const Picture& picture, std::size_t channel)
{
    const std::size_t step = 4 * picture.ChannelSize;
    // Of two bytes the high one stands second on the machines that we build for; it is precise enough.
    const std::size_t offset = channel * picture.ChannelSize + picture.ChannelSize - 1;
    std::uint64_t sum = 0;
    for (std::size_t i = offset; i < picture.Pixels.size(); i += step) {
        sum += picture.Pixels[i];
    }
    return static_cast<double>(sum) / 255.0 / static_cast<double>(picture.Pixels.size() / step);
}

} // namespace

SurfaceFinish ComputeFinish(const Material& material, const Picture* picture)
{
    SurfaceFinish finish{material.Metallic, material.Roughness};
    if (material.Gloss) {
        finish = {0.0, 1.0 - material.Gloss->Glossiness};
    }
    if (picture != nullptr && !picture->Pixels.empty()) {
        finish.Roughness *= MeanOf(*picture, 1);
        finish.Metallic *= MeanOf(*picture, 2);
    }
    finish.Metallic = std::clamp(finish.Metallic, 0.0, 1.0);
    finish.Roughness = std::clamp(finish.Roughness, 0.0, 1.0);
    return finish;
}

Shading ComputeShading(const Material& material, const SurfaceFinish& finish)
{
    Shading shading;
    const double m = finish.Metallic;
    for (std::size_t i = 0; i < 3; ++i) {
        shading.Diffuse[i] = material.BaseColor[i];
        shading.Specular[i] = material.Gloss ? material.Gloss->Specular[i]
                                             : DielectricReflectance * (1.0 - m) + material.BaseColor[i] * m;
        shading.Emission[i] = material.Emissive[i];
    }
    shading.EmissionScale = material.EmissiveStrength;
    const double exponent = 2.0 / std::pow(finish.Roughness, 4.0) - 2.0;
    shading.Shininess = std::clamp(exponent, 1.0, MaxShininess);
    shading.Transparency = material.Alpha == AlphaMode::Opaque ? 0.0 : 1.0 - material.BaseColor[3];
    return shading;
}

} // namespace tq4x::gltf
