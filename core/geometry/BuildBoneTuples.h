#pragma once

#include "geometry/Mesh.h"

namespace tq4x
{

/// Gives each corner a tuple of places in its set's `BoneIndexTable` and a tuple of weights from 0 to 1, from
/// the first four influences of its vertex. The shape keeps the distinct tuples in order of first appearance;
/// the corners' bone slots get their numbers.
///
/// In a smooth shape, a table of less than five entries gives the same index tuple 0, 1, 2, 3 (up to the size
/// of the table) to all vertices of the set, so that the stream is constant, and a weight stands at the place
/// of its bone. Else influence number k fills component k; a bone that the table lacks leaves it 0.
void BuildBoneTuples(SeparateDataShape& shape);

} // namespace tq4x
