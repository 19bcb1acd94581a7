#include "collect/CollectorFactory.h"

#include "collect/ExportCamera.h"
#include "collect/ExportLight.h"
#include "collect/ExportMaterial.h"
#include "collect/ExportMesh.h"
#include "export/Each.h"
#include "export/ExportContext.h"
#include "pipeline/MessageLog.h"

#include <xsi_geometry.h>
#include <xsi_parameter.h>
#include <xsi_primitive.h>
#include <xsi_property.h>
#include <xsi_x3dobject.h>

#include <string>

namespace tq4x
{
namespace
{

XSI::CRef GeometryOf(const XSI::X3DObject& object)
{
    return object.GetActivePrimitive().GetGeometry().GetRef();
}

/// True for a polygon mesh whose approximation settings ask the host for subdivision.
bool IsSubdivisionSurface(const XSI::X3DObject& object)
{
    for (const XSI::CRef& reference : Each(object.GetProperties())) {
        const XSI::Property property(reference);
        if (property.GetType() == "geomapprox")
            return static_cast<LONG>(property.GetParameterValue("gapproxmosl")) > 0;
    }
    return false;
}

/// Reports an object that can't be exported. True if it was one.
bool ReportRefused(const XSI::X3DObject& object, const XSI::CRef& geometry)
{
    const std::string name = object.GetName().GetAsciiString();
    if (geometry.IsA(XSI::siNurbsSurfaceMeshID))
        ReportMessage(MessageCode::CannotExportNurbsSurface, name);
    else if (geometry.IsA(XSI::siNurbsCurveListID))
        PrintMessage("Can't export NURBS curve(" + name + ").", Severity::Warning);
    else if (geometry.IsA(XSI::siPolygonMeshID) && IsSubdivisionSurface(object))
        ReportMessage(MessageCode::CannotExportSubdivisionSurface, name);
    else
        return false;
    return true;
}

std::unique_ptr<ExportX3DObject> MakeCollector(ExportContext& context, const XSI::X3DObject& object,
                                               const XSI::CRef& geometry)
{
    if (geometry.IsA(XSI::siPolygonMeshID))
        return std::make_unique<ExportMesh>(context, object.GetRef());
    if (object.IsA(XSI::siCameraID))
        return std::make_unique<ExportCamera>(context, object.GetRef());
    if (object.IsA(XSI::siLightID))
        return std::make_unique<ExportLight>(context, object.GetRef());
    return std::make_unique<ExportNode>(context, object.GetRef());
}

} // namespace

bool VisitObject(ExportContext& context, const XSI::CRef& reference, bool insideInstance,
                 const InstancePath& instances)
{
    const CollectorKey key = KeyOf(reference, instances);
    if (context.Find(key) != nullptr)
        return true;
    const XSI::X3DObject object(reference);
    const XSI::CRef geometry = GeometryOf(object);
    if (ReportRefused(object, geometry))
        return false;
    std::unique_ptr<ExportX3DObject> collector = MakeCollector(context, object, geometry);
    collector->InsideInstance = insideInstance;
    collector->Instances = instances;
    ExportX3DObject& added = static_cast<ExportX3DObject&>(context.Add(key, std::move(collector)));
    added.Link(); // the walk meets parents first
    if (added.IsKindOf(CollectorKind::Mesh))
        static_cast<ExportMesh&>(added).CreateMaterials();
    return true;
}

} // namespace tq4x
