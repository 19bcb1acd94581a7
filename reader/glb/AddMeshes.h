#pragma once

#include <set>
#include <string>
#include <vector>

#include "glb/AddMaterials.h"
#include "glb/AddSkeleton.h"

namespace tq4x::reader
{

/// Adds the meshes of a model. The shapes of a node that nothing skins lie on the node of its bone; skinned
/// ones lie on nodes of their own on the first level, as glTF ignores where a skinned mesh stands. A mesh
/// whose visibility moves (its index stands in `moving`) has a node of its own too. Invisible meshes that
/// don't move are left out, with a warning. Gives the node of each mesh of the model, -1 for one that is left
/// out.
[[nodiscard]] std::vector<int> AddMeshes(const Model& model, const SkeletonNodes& skeleton,
                                         const MaterialTable& materials, const std::set<std::size_t>& moving,
                                         GlbScene& scene);

} // namespace tq4x::reader
