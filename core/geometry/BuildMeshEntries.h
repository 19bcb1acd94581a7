#pragma once

#include "scene/SkeletalModelWriter.h"

namespace tq4x
{

/// Fills `MeshEntries` from `Bones`: one entry per output bone with a mesh, in the order of the bone list. A
/// mesh that an earlier bone carries too is cloned, so that its shapes count and are written once for each.
void BuildMeshEntries(SkeletalModelWriter& content);

} // namespace tq4x
