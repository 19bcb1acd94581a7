#pragma once

#include <array>
#include <map>
#include <string>

#include "ReadModel.h"
#include "glb/AddTextures.h"

namespace tq4x::reader
{

/// A material of the glTF file.
struct GlbMaterial
{
    int Index = -1;
    const Material* Source = nullptr;
    int CoordinateSets = 0;                  ///< sets of texture coordinates that its textures need
    std::array<std::string, 3> TextureInfos; ///< JSON pointer of each mapper's place; empty: not used
};

using MaterialTable = std::map<std::string, GlbMaterial, std::less<>>; ///< by name

/// Adds the materials of a model with the textures that they show.
[[nodiscard]] MaterialTable AddMaterials(const Model& model, const TextureMap& textures, GlbScene& scene);

/// Metalness and roughness that come nearest to a material's highlights.
struct SurfaceFinish
{
    double Metallic = 0;
    double Roughness = 1;
};

/// Turns the formula of opened scenes round: highlights have the colour 0.04 × (1 − m) + diffuse × m, and the
/// cosine power of their table is 2 / r⁴ − 2. Without highlights the surface is rough and no metal.
[[nodiscard]] SurfaceFinish ComputeFinish(const Material& material, const LookupTableSet& tables);

} // namespace tq4x::reader
