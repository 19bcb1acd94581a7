#pragma once

#include "material/MaterialSet.h"
#include "scene/Bone.h"
#include "scene/SkeletalModelWriter.h"

#include <memory>

namespace tq4x
{

/// The model of one export: everything but its cameras and lights. Filled by the conversion of the scene,
/// then read by the writers. The meshes belong to the model, the bones to their root.
struct SceneContent
{
    std::unique_ptr<Bone> Root; ///< none if nothing that becomes a node was collected
    SkeletalModelWriter Model;
    MaterialSet Materials;
};

} // namespace tq4x
