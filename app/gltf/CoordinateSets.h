#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "gltf/GltfDocument.h"

namespace tq4x::gltf
{

/// A coordinate set as the host knows it: in the host wrapping and projection belong to the set and not to
/// the texture, so a TEXCOORD_n that two textures use differently becomes two sets.
struct CoordinateSet
{
    std::size_t Attribute = 0; ///< the n of TEXCOORD_n
    bool WrapU = true;
    bool WrapV = true;
    TextureTransform Transform;
    Index AnimatedMaterial; ///< set where an animation moves the transform: whose, and of which texture
    TextureSlot AnimatedSlot = TextureSlot::BaseColor;
    std::string Name; ///< "TEXCOORD_0"; a second set of one mesh is "TEXCOORD_0_2"

    /// Whether textures that want one and the other can share a set.
    [[nodiscard]] bool Suits(const CoordinateSet& other) const;
};

struct CoordinateSets
{
    std::vector<CoordinateSet> Sets;
    /// For each material the places in `Sets` for its base colour and its normal texture.
    std::vector<std::array<Index, 2>> OfMaterial;

    [[nodiscard]] Index Find(std::size_t material, TextureSlot slot) const;
};

/// Gathers what the materials ask for and names the sets: two that meet on one mesh have different names,
/// others keep the plain one. `animation` is the clip that is going to be used, nullptr for none.
[[nodiscard]] CoordinateSets BuildCoordinateSets(const Document& document, const Animation* animation);

/// The parameters of the host's projection. A coordinate p, v upwards, becomes S * R * (p - T), where R turns
/// by minus `Rotation`, and S divides by the scales.
struct Projection
{
    double ScaleU = 1.0;
    double ScaleV = 1.0;
    double Rotation = 0.0; ///< degrees
    double TranslateU = 0.0;
    double TranslateV = 0.0;
    bool IsExact = true; ///< false: the transform shears what it turns, which a projection can't
};

/// The projection that moves flipped coordinates (u, 1 - v) as the transform moves (u, v). An axis whose
/// scale is 0 gets `LargestScale`, the nearest that a projection has.
[[nodiscard]] Projection ComputeProjection(const TextureTransform& transform);

inline constexpr double LargestScale = 1e6;

} // namespace tq4x::gltf
