#pragma once

#include "geometry/GeometryResult.h"
#include "geometry/Mesh.h"

#include <array>
#include <cstdint>
#include <span>

namespace tq4x
{

/// A polygon that is not part of a shape yet: its corners in winding order.
struct PolygonView
{
    PrimitiveMode Mode = PrimitiveMode::Other;
    std::span<const PolygonCorner> Corners;
};

/// The polygon of these corners, its mode taken from their number: 1 `Points`, 2 `Lines`, 3 `Triangles`, any
/// other number `TriangleFan`.
PolygonView PolygonOf(std::span<const PolygonCorner> corners);

/// The three corner numbers of triangle `triangle`, counted from 0, of a polygon of `cornerCount` corners: a
/// zig-zag between its two ends. Of five corners: (0, 1, 4), (1, 2, 4), (4, 2, 3).
std::array<std::int32_t, 3> ZigZagTriangle(std::int32_t triangle, std::int32_t cornerCount);

/// Copies the polygon into the shape. In a skinned shape, one of four or more corners that has more bones
/// than the capacity is cut into triangles. Status 1 if the polygon, or a triangle of it, still has more: it
/// stays in the shape, and the mesh is of no use.
GeometryResult AddPolygonToShape(SeparateDataShape& shape, const PolygonView& polygon);

/// The same for the shape of this material, made if it is the first polygon of the material. The mesh's pool,
/// flags and weights must be complete: the shape takes them over here.
GeometryResult AddPolygon(Mesh& mesh, std::uint32_t materialIndex, const PolygonView& polygon);

} // namespace tq4x
