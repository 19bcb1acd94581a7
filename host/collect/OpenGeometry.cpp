#include "collect/OpenGeometry.h"

#include "export/Each.h"

#include <xsi_polygonmesh.h>
#include <xsi_primitive.h>
#include <xsi_property.h>

namespace tq4x
{
namespace
{

struct Discontinuity
{
    bool IsOn = true;
    double Angle = 60.0; ///< degrees
};

Discontinuity ReadDiscontinuity(const XSI::X3DObject& object)
{
    Discontinuity discontinuity;
    for (const XSI::CRef& reference : Each(object.GetProperties())) {
        const XSI::Property property(reference);
        if (property.GetType() != "geomapprox")
            continue;
        const XSI::CValue isOn = property.GetParameterValue("gapproxmoad");
        const XSI::CValue angle = property.GetParameterValue("gapproxmoan");
        if (!isOn.IsEmpty())
            discontinuity.IsOn = static_cast<bool>(isOn);
        if (!angle.IsEmpty())
            discontinuity.Angle = static_cast<double>(angle);
        break;
    }
    return discontinuity;
}

} // namespace

XSI::CGeometryAccessor OpenGeometry(const XSI::X3DObject& object)
{
    const Discontinuity discontinuity = ReadDiscontinuity(object);
    const XSI::PolygonMesh mesh(object.GetActivePrimitive().GetGeometry().GetRef());
    return mesh.GetGeometryAccessor(XSI::siConstructionModeModeling, XSI::siCatmullClark, 0,
                                    discontinuity.IsOn, discontinuity.Angle);
}

} // namespace tq4x
