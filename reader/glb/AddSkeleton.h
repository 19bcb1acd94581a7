#pragma once

#include <vector>

#include "ReadModel.h"
#include "glb/GlbScene.h"
#include "glb/NodeMath.h"

namespace tq4x::reader
{

/// The nodes of a skeleton.
struct SkeletonNodes
{
    std::vector<int> Bones; ///< the node of each bone
    int RootNode = -1;      ///< the node above all bones where there is one
};

/// A node for every bone, with its local transform. Where the skeleton has several roots, or the model as a
/// whole is moved, a node stands above them: a skin needs a common root.
[[nodiscard]] SkeletonNodes AddSkeleton(const Skeleton& skeleton, const Transform& root, GlbScene& scene);

/// The bones' places in the model in the pose of the skeleton, parents' scales applied in the plain way.
[[nodiscard]] std::vector<Matrix> PoseOf(const Skeleton& skeleton);

} // namespace tq4x::reader
