#pragma once

#include "geometry/GeometryResult.h"
#include "geometry/Mesh.h"

namespace tq4x
{

/// Groups the polygons of a welded and compacted shape: primitive sets that fit the palette, merged and
/// ordered, one primitive per mode in each; with weights, the bone tables and the tuples of the vertices; the
/// bounding box of the positions.
GeometryResult FinalizeShape(SeparateDataShape& shape);

/// Brings the shapes of a mesh to the form that is written: welds, compacts and finalizes each. False if a
/// shape failed; the others are done all the same.
bool FinalizeMesh(Mesh& mesh);

} // namespace tq4x
