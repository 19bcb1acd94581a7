#pragma once

#include <xsi_geometry.h>

namespace XSI
{

/// A geometry of NURBS surfaces. Its points are not kept.
class NurbsSurfaceMesh : public Geometry
{
public:
    NurbsSurfaceMesh() = default;

    NurbsSurfaceMesh(const CRef& ref) : Geometry(ref.As(siNurbsSurfaceMeshID)) {}
};

} // namespace XSI
