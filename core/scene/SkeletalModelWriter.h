#pragma once

#include "geometry/Mesh.h"
#include "scene/Bone.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace tq4x
{

/// What a mesh of the model file is bound to.
enum class MeshVisibilityMode : std::int32_t
{
    BindByIndex = 0,
    BindByName = 1,
};

/// One node of the model that has a mesh.
struct MeshEntry
{
    tq4x::Bone* Bone = nullptr;
    tq4x::Mesh* Mesh = nullptr;
    std::int32_t FirstShapeIndex = 0; ///< shapes of the entries before
};

/// The top record of one model export. Owns the meshes; the bones belong to their root.
struct SkeletalModelWriter
{
    std::vector<std::unique_ptr<Mesh>> Meshes; ///< in order of creation: the collected ones, then clones
    std::vector<MeshEntry> MeshEntries;        ///< one per node with a mesh, in bone list order
    std::vector<Bone*> Bones;                  ///< all bones of the output, by `BoneIndex`
    float Magnify = 1.0f;                      ///< model scale, applied when writing
    tq4x::MeshVisibilityMode MeshVisibilityMode = tq4x::MeshVisibilityMode::BindByIndex;
};

} // namespace tq4x
