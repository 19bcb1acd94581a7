#pragma once

#include "geometry/Mesh.h"
#include "scene/Bone.h"

#include <cstdint>
#include <span>

namespace tq4x
{

/// How skins are brought to the file; the values of the option of this name.
enum class AdjustSkinning : std::uint32_t
{
    None = 0,          ///< a mesh that one bone moves goes over to that bone
    RigidSkinning = 1, ///< it stays on its node
};

/// Brings a mesh into the spaces that its skin needs. Needs the bone list (`BoneIndex`) and bind poses.
///
/// A mesh that one bone moves goes over to that bone, unless it is to stay. Of the other skinned meshes, each
/// shape whose vertices each have one bone becomes rigid: its vertices keep that one influence, and its
/// values move into the spaces of their bones. A skinned shape without vertices is rigid. The other shapes
/// are smooth and move into the world space of the bind pose. The bones of all polygons are up to date
/// afterwards. An unskinned mesh is left alone.
void PrepareSkin(Mesh& mesh, Bone& bone, AdjustSkinning adjustSkinning);

/// The same for all meshes in the order of the bone list; a mesh that several bones carry is treated once,
/// with the first.
void PrepareSkins(std::span<Bone* const> bones, AdjustSkinning adjustSkinning);

} // namespace tq4x
