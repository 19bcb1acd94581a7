#pragma once

#include "math/Matrix44.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tq4x
{

struct Bone;

/// Global matrix at a frame index of the samples. Under the host's hierarchical scaling a parent's scale does
/// not shear through the child's rotation.
Matrix44 GetWorldMatrix(const Bone& bone, std::int32_t frameIndex);

/// `BindMatrix`, or the identity for a node without a bind pose.
Matrix44 GetBindGlobalMatrix(const Bone& bone);

/// The bind pose from the parent's point of view: from its bind pose, or from its first sample if it has
/// none. The identity for a node without a bind pose. A parent that has no inverse counts as the identity.
Matrix44 GetBindLocalMatrix(const Bone& bone);

/// `GetWorldMatrix` of every bone of a bone list, by its place in it; the same bits at the cost of one
/// product per bone. `BoneIndex` must be the place in the list, parents first.
std::vector<Matrix44> ComputeWorldMatrices(std::span<Bone* const> bones, std::int32_t frameIndex);

/// `GetBindLocalMatrix` of every bone of a bone list, by its place in it, at the same cost.
std::vector<Matrix44> ComputeBindLocalMatrices(std::span<Bone* const> bones);

} // namespace tq4x
