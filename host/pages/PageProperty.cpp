#include "pages/PageProperty.h"

#include "export/Each.h"

#include <xsi_application.h>
#include <xsi_cluster.h>

namespace tq4x
{
namespace
{

XSI::CRef MaterialOf(const XSI::CRef& object)
{
    if (object.IsA(XSI::siMaterialID))
        return object;
    if (object.IsA(XSI::siClusterID))
        return XSI::Cluster(object).GetMaterial();
    return XSI::X3DObject(object).GetMaterial();
}

} // namespace

XSI::SceneItem CarrierOf(PageCarrier carrier, const XSI::CRef& selected)
{
    switch (carrier) {
    case PageCarrier::Object:
        return selected.As(XSI::siX3DObjectID);
    case PageCarrier::Material:
        return MaterialOf(selected);
    case PageCarrier::Item:
        return selected.IsA(XSI::siMaterialID) || selected.IsA(XSI::siClusterID)
                   ? selected
                   : selected.As(XSI::siX3DObjectID);
    }
    return XSI::SceneItem();
}

XSI::CustomProperty GetOrAddProperty(const XSI::SceneItem& item, const char* type, bool create)
{
    for (const XSI::CRef& reference : Each(item.GetProperties())) {
        const XSI::CustomProperty property(reference);
        if (property.IsValid() && property.GetType() == type)
            return property;
    }
    return create ? XSI::CustomProperty(item.AddProperty(type, false, type)) : XSI::CustomProperty();
}

XSI::CustomProperty RootProperty(const char* type)
{
    return GetOrAddProperty(XSI::Application().GetActiveSceneRoot(), type, true);
}

std::vector<XSI::CRef> SelectedObjects()
{
    std::vector<XSI::CRef> objects;
    for (const XSI::CRef& object : Each(XSI::Application().GetSelection().GetArray()))
        if (object.IsValid())
            objects.push_back(object);
    return objects;
}

XSI::CString CarrierName(const XSI::CustomProperty& property)
{
    const XSI::CString fullName = property.GetFullName();
    const ULONG ownLength = property.GetName().Length() + 1; // with the point before it
    return fullName.GetSubString(0, fullName.Length() - ownLength);
}

} // namespace tq4x
