#pragma once

#include <xsi_doublearray.h>
#include <xsi_floatarray.h>
#include <xsi_longarray.h>
#include <xsi_ref.h>
#include <xsi_status.h>

namespace XSI
{

/// Reads a triangulated polygon mesh. A node is a corner of a polygon as far as its attributes differ; every
/// list "per node" has one entry for each. A list that the mesh can't give fails and leaves the array empty.
class CGeometryAccessor
{
public:
    CGeometryAccessor() = default;

    /// How the accessor was asked for.
    struct Settings
    {
        siConstructionMode Mode = siConstructionModeModeling;
        siSubdivisionRuleType SubdivisionRule = siCatmullClark;
        LONG SubdivisionLevel = 0;
        bool UseDiscontinuity = false;
        double DiscontinuityAngle = 60.0; ///< Degrees.
    };

    CGeometryAccessor(const CRef& mesh, const Settings& settings) : m_mesh(mesh), m_settings(settings) {}

    bool IsValid() const;

    const Settings& GetSettings() const { return m_settings; }

    LONG GetVertexCount() const;
    LONG GetNodeCount() const;
    LONG GetPolygonCount() const;
    LONG GetTriangleCount() const;

    /// Three per vertex.
    CStatus GetVertexPositions(CDoubleArray& positions) const;
    /// Three per node.
    CStatus GetNodeNormals(CFloatArray& normals) const;

    /// Cluster properties with values per node.
    CRefArray GetUserNormals() const;
    CRefArray GetVertexColors() const;
    CRefArray GetUVs() const;

    /// The envelopes of the mesh.
    CRefArray GetEnvelopeWeights() const;

    /// The materials of the mesh, and for each polygon its index in that list.
    CRefArray GetMaterials() const;
    CStatus GetPolygonMaterialIndices(CLongArray& indices) const;

    /// Three per triangle.
    CStatus GetTriangleVertexIndices(CLongArray& indices) const;
    CStatus GetTriangleNodeIndices(CLongArray& indices) const;

    /// For each triangle the polygon that it is a piece of.
    CStatus GetPolygonTriangleIndices(CLongArray& indices) const;

private:
    CRef m_mesh;
    Settings m_settings;
};

} // namespace XSI
