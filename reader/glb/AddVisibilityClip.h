#pragma once

#include <set>
#include <vector>

#include "ReadModel.h"
#include "glb/ClipBuilder.h"

namespace tq4x::reader
{

/// The meshes of a model, by index, that an animation can show and hide.
[[nodiscard]] std::set<std::size_t> MovingMeshes(const VisibilityAnimation& animation, const Model& model);

/// Which meshes are to be seen before anything moves: a mesh and its node must both be visible.
[[nodiscard]] std::vector<bool> VisibleMeshes(const Model& model);

/// Shows and hides the nodes of meshes as an animation says. `nodes` has the node of each mesh; -1: left out.
void AddVisibilityClip(const VisibilityAnimation& animation, const Model& model,
                       const std::vector<int>& nodes, ClipBuilder& clip, GlbScene& scene);

/// Gives a node the extension that hides it, and a pointer to the switch.
std::string SetVisible(int node, bool isVisible, GlbScene& scene);

} // namespace tq4x::reader
