#pragma once

#include <vector>

#include <xsi_ref.h>

namespace XSI::Host
{

/// A triangulated polygon mesh. A node is a corner as far as its attributes differ: corners that agree in all
/// of them may share one. Nothing here is checked; a plug-in must cope with indices that point nowhere.
struct MeshGeometry
{
    std::vector<double> Positions;      ///< Three per vertex.
    std::vector<float> NodeNormals;     ///< Three per node.
    std::vector<LONG> TriangleVertices; ///< Three per triangle.
    std::vector<LONG> TriangleNodes;    ///< Three per triangle; empty: the same numbers as the vertices.
    std::vector<LONG> TrianglePolygons; ///< One per triangle; empty: each triangle is a polygon.
    std::vector<LONG> PolygonMaterials; ///< One per polygon, an index into Materials; empty: all 0.
    std::vector<CRef> Materials;

    bool ArePositionsReadable = true; ///< False: the accessor's call fails.
    bool AreNormalsReadable = true;

    LONG VertexCount() const { return static_cast<LONG>(Positions.size() / 3); }

    LONG TriangleCount() const { return static_cast<LONG>(TriangleVertices.size() / 3); }

    /// The number of normals; without them one more than the largest node index.
    LONG NodeCount() const;
    /// One more than the largest polygon index.
    LONG PolygonCount() const;
};

} // namespace XSI::Host
