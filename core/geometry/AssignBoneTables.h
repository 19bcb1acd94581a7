#pragma once

#include "geometry/Mesh.h"

namespace tq4x
{

/// Fills the `BoneIndexTable` of each set: the bones of the set in the order of their slots in the hardware's
/// table, where a bone that survives from the set before keeps its slot. Needs the final order of the sets
/// and the bone list (`BoneIndex`).
void AssignBoneTables(SeparateDataShape& shape);

} // namespace tq4x
