#pragma once

#include "geometry/GeometryResult.h"
#include "geometry/Mesh.h"

#include <vector>

namespace tq4x
{

/// By descending number of corners, then by descending mode; ties keep their order.
void SortPolygons(std::vector<Polygon>& polygons);

/// Sorts the polygons and moves them into primitive sets: each polygon joins the first set whose palette
/// holds all its bones, else it starts a set of its own. An unskinned shape has one set; a shape without
/// polygons none. Always status 0.
GeometryResult BuildPrimitiveSets(SeparateDataShape& shape);

} // namespace tq4x
