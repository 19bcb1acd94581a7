#pragma once

#include "geometry/CollectOutputVertices.h"
#include "geometry/Mesh.h"

#include <span>
#include <vector>

namespace tq4x
{

class XmlWriter;

/// The positions of a shape's vertices relative to the middle of their axis-aligned bounds.
struct OffsetPositions
{
    Vector3 Offset;            ///< the middle, magnified
    std::vector<float> Values; ///< three a vertex, magnified
};

/// Centres the positions of the vertices. Components of the middle within 1e-6 of zero count as zero; without
/// vertices it is zero.
OffsetPositions ComputeOffsetPositions(const SeparateDataShape& shape, const OutputVertices& vertices,
                                       float magnify);

/// The values of a slot at all vertices, one row of `dimension` components each. A vertex without an entry in
/// the list has zeros.
std::vector<float> GatherValues(const SeparateDataShape& shape, const OutputVertices& vertices,
                                VertexSlot slot, std::size_t dimension);

/// Writes `VertexAttributes` at the stream's level: quantised streams, and constants where all vertices agree
/// after quantising. Slots whose flag is off are left out; the bone streams stand where the shape has
/// weights.
void WriteVertexAttributes(XmlWriter& stream, const SeparateDataShape& shape, const OutputVertices& vertices,
                           const OffsetPositions& positions);

} // namespace tq4x
