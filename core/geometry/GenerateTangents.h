#pragma once

#include "geometry/GeometryResult.h"
#include "geometry/Mesh.h"

namespace tq4x
{

/// Derives the tangents of a shape from its positions, its normals and the texture coordinates of `uvSlot`
/// (one of the three coordinate slots), and smooths them. Runs before the shape is welded.
///
/// Leaves: one tangent per normal, zero where no corner of the shape uses the normal; the corners' tangent
/// entries equal their normal entries; the tangent flag of the shape is set. Where corners share a normal
/// number the last one decides, polygons taken in the shape's order.
///
/// Status 1, with the shape untouched: another slot, no positions, normals or coordinates, tangents that
/// exist already, or a corner without one of the three.
GeometryResult GenerateTangents(SeparateDataShape& shape, VertexSlot uvSlot);

/// The same for all shapes, by ascending key. All are done; the answer is that of the first failing one.
GeometryResult GenerateTangents(Mesh& mesh, VertexSlot uvSlot);

} // namespace tq4x
