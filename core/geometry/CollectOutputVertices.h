#pragma once

#include "geometry/Mesh.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tq4x
{

/// The vertices of a shape as they are written: its distinct corners, numbered from 0 in the order in which
/// the walk over sets, primitives and corners meets them.
struct OutputVertices
{
    /// By vertex: the place in the shape's `Corners` of the first corner that is this vertex.
    std::vector<std::size_t> FirstCorners;
    /// Parallel to the shape's `Corners`: the vertex of each corner; 0 for corners of no primitive.
    std::vector<std::int32_t> Indices;

    std::size_t Count() const { return FirstCorners.size(); }
};

/// Finds the vertices of a shape whose primitive sets exist. Two corners are one vertex when their twelve
/// slots agree; the host's vertex number takes no part. Corners are found by their hash: the time is
/// proportional to their number.
OutputVertices CollectOutputVertices(const SeparateDataShape& shape);

/// The vertices of a primitive's corners, in winding order.
inline std::span<const std::int32_t> IndicesOf(const OutputVertices& vertices, const Polygon& primitive)
{
    return std::span(vertices.Indices)
        .subspan(static_cast<std::size_t>(primitive.FirstCorner),
                 static_cast<std::size_t>(primitive.CornerCount));
}

} // namespace tq4x
