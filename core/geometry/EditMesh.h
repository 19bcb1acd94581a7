#pragma once

#include "geometry/Mesh.h"

#include <cstdint>
#include <memory>

namespace tq4x
{

/// Marks an attribute as in use. The bone slots are no one's to set and are ignored.
void SetAttributeFlag(Mesh& mesh, VertexSlot slot, bool value);

/// Replaces the weight table, points every shape at it and brings the bones of the polygons up to date.
/// Nothing unskins the mesh: its polygons have no bones then.
void SetSkinWeights(Mesh& mesh, std::unique_ptr<SkinWeightTable> table);

/// The shape of a material. A new one takes capacity, name, flags, pool, weights and callback from the mesh.
SeparateDataShape& GetOrCreateShape(Mesh& mesh, std::uint32_t materialIndex);

/// Number of shapes.
std::int32_t CountShapes(const Mesh& mesh);

} // namespace tq4x
