#pragma once

#include "geometry/Mesh.h"

namespace tq4x
{

/// Makes one primitive of all `Triangles` of a set, one of its `Lines` and one of its `Points`; a polygon of
/// any other mode becomes a primitive of its own. In each set primitives stand by descending mode, then by
/// descending number of corners; ties keep the order of the polygons, collected ones last. The corners of the
/// shape are brought into the order of sets and primitives.
void RegroupPrimitives(SeparateDataShape& shape);

} // namespace tq4x
