#pragma once

#include "geometry/Mesh.h"

namespace tq4x
{

/// Exchanges sets where that lowers the number of bones that have to be loaded over all sets: each pair once,
/// in order, each exchange judged on the whole. Needs the bone list (`BoneIndex`).
///
/// Grows with the cube of the number of sets where no exchange can be judged early.
void OrderPrimitiveSets(SeparateDataShape& shape);

} // namespace tq4x
