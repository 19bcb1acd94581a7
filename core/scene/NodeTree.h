#pragma once

#include "math/Matrix44.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace tq4x
{

struct Bone;
struct Mesh;

/// Gives a node to its parent, which owns it from then on. The child goes to the head of the chain; nothing
/// may rely on the chain's order. Returns the child.
Bone& AddChild(std::unique_ptr<Bone> child, Bone& parent);

/// Names the mesh that the node carries; the node does not own it.
void SetMesh(Bone& bone, Mesh* mesh);

/// Stores the local matrix of a frame index. The first call settles the index of the first sample; gaps are
/// filled with the identity; an index before the first sample is ignored.
void SetSample(Bone& bone, std::int32_t frameIndex, const Matrix44& matrix);

/// The local matrix at a frame index, clamped to the first and the last sample; the identity without samples.
Matrix44 GetSample(const Bone& bone, std::int32_t frameIndex);

/// Appends one sample of the visibility, 0 or 1.
void AppendVisibility(Bone& bone, float value);

/// Appends a node and all nodes below it in the order of the output, parents first, siblings by ascending
/// bytes of their names, equal names in the order in which they were added. Sets `BoneIndex`. Children
/// without `IsOutput` are left out with all that is below them.
void CollectBones(Bone& root, std::vector<Bone*>& list);

} // namespace tq4x
