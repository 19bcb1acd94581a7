#pragma once

#include "geometry/Mesh.h"

namespace tq4x
{

/// Merges the sets of a shape as far as the capacity allows, then orders them so that few matrices change
/// between them, then sorts the polygons of each.
///
/// A pair whose palettes together exceed the capacity never merges. Of the others the best is the one with
/// the most room left and bones shared, then the most bones shared, then the larger palette; of equal ones
/// the first, in the order of the sets by descending palette size.
void MergePrimitiveSets(SeparateDataShape& shape);

} // namespace tq4x
