#pragma once

#include "geometry/Mesh.h"

#include <span>

namespace tq4x
{

/// The distinct bones that influence the corners, whatever their percentages. Corners without a vertex number
/// of the table bring none.
BoneList CollectCornerBones(std::span<const PolygonCorner> corners, const SkinWeightTable& table);

/// Sets the polygon's `Bones` from the shape's weight table; to none in an unskinned shape.
void UpdatePolygonBones(SeparateDataShape& shape, Polygon& polygon);

/// The same for all polygons; forgets the lists that no polygon has any more.
void UpdateAllPolygonBones(SeparateDataShape& shape);

} // namespace tq4x
