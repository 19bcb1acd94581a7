#pragma once

#include "geometry/Mesh.h"

namespace tq4x
{

/// Drops the values of the pool that no corner of the shape refers to; the others move down in their order,
/// and the corners follow. Lists that are used as a whole stay shared. Work in proportion to the corners.
void DropUnusedValues(SeparateDataShape& shape);

} // namespace tq4x
