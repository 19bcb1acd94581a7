#pragma once

#include <xsi_customproperty.h>
#include <xsi_material.h>

#include <vector>

namespace tq4x
{

/// What a page's property hangs on.
enum class PageCarrier
{
    Object,   ///< the 3D object
    Material, ///< the material: itself, or that of a cluster or a 3D object
    Item,     ///< the 3D object, cluster or material itself
};

/// The object that carries the property for a selected one; invalid if that is of no fitting kind, or has no
/// material.
XSI::SceneItem CarrierOf(PageCarrier carrier, const XSI::CRef& selected);

/// The item's own property of a type, added where it is missing and wanted; invalid otherwise.
XSI::CustomProperty GetOrAddProperty(const XSI::SceneItem& item, const char* type, bool create);

/// The property of a type on the scene root, added where it is missing.
XSI::CustomProperty RootProperty(const char* type);

/// The valid objects of the selection, in its order.
std::vector<XSI::CRef> SelectedObjects();

/// The name of the object that carries the property.
XSI::CString CarrierName(const XSI::CustomProperty& property);

} // namespace tq4x
