#pragma once

#include <xsi_geometry.h>
#include <xsi_geometryaccessor.h>

namespace XSI
{

/// A geometry of polygons.
class PolygonMesh : public Geometry
{
public:
    PolygonMesh() = default;

    PolygonMesh(const CRef& ref) : Geometry(ref.As(siPolygonMeshID)) {}

    /// The triangulated mesh. The model stores triangulated meshes with their normals, so that the arguments
    /// are kept by the accessor and change nothing.
    CGeometryAccessor GetGeometryAccessor(siConstructionMode mode = siConstructionModeModeling,
                                          siSubdivisionRuleType rule = siCatmullClark, LONG level = 0,
                                          bool useDiscontinuity = false,
                                          double discontinuityAngle = 60.0) const;
};

} // namespace XSI
