#pragma once

#include <xsi_geometry.h>

namespace XSI
{

/// A geometry of NURBS curves. Its points are not kept.
class NurbsCurveList : public Geometry
{
public:
    NurbsCurveList() = default;

    NurbsCurveList(const CRef& ref) : Geometry(ref.As(siNurbsCurveListID)) {}
};

} // namespace XSI
