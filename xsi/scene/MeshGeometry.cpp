#include "scene/MeshGeometry.h"

#include <algorithm>

namespace XSI::Host
{

namespace
{

LONG CountByLargest(const std::vector<LONG>& indices)
{
    return indices.empty() ? 0 : std::max<LONG>(0, *std::max_element(indices.begin(), indices.end()) + 1);
}

} // namespace

LONG MeshGeometry::NodeCount() const
{
    if (!NodeNormals.empty()) {
        return static_cast<LONG>(NodeNormals.size() / 3);
    }
    return CountByLargest(TriangleNodes.empty() ? TriangleVertices : TriangleNodes);
}

LONG MeshGeometry::PolygonCount() const
{
    return TrianglePolygons.empty() ? TriangleCount() : CountByLargest(TrianglePolygons);
}

} // namespace XSI::Host
