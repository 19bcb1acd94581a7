#pragma once

#include "material/MaterialSet.h"
#include "scene/Bone.h"
#include "scene/SkeletalModelWriter.h"

#include <memory>

namespace tq4x
{

/// The host-independent model of one export: what the collectors fill and the section writers read.
struct SceneContent
{
    std::unique_ptr<Bone> RootBone; ///< owns the tree; none until the first node joins
    SkeletalModelWriter Model;      ///< owns the meshes
    MaterialSet Materials;          ///< owns materials, textures and lookup tables
};

} // namespace tq4x
