#pragma once

#include "glb/AddMeshes.h"
#include "glb/ClipBuilder.h"

namespace tq4x::reader
{

/// Lets the nodes of a skeleton move as an animation says. Bones that the model lacks are told.
void AddSkeletalClip(const SkeletalAnimation& animation, const Skeleton& model, const SkeletonNodes& nodes,
                     ClipBuilder& clip, GlbScene& scene);

} // namespace tq4x::reader
