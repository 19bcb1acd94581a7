#include "collect/Visibility.h"
#include "export/Each.h"

#include <xsi_parameter.h>
#include <xsi_property.h>
#include <xsi_x3dobject.h>

namespace tq4x
{

XSI::CRef FindViewVisibility(const XSI::CRef& object)
{
    for (const XSI::CRef& reference : Each(XSI::X3DObject(object).GetProperties())) {
        const XSI::Property property(reference);
        if (property.GetType() == "visibility")
            return property.GetParameter("viewvis").GetRef();
    }
    return {};
}

bool IsHiddenForGood(const XSI::CRef& object)
{
    const XSI::Parameter visibility(FindViewVisibility(object));
    return visibility.IsValid() && !visibility.GetSource().IsValid() &&
           !static_cast<bool>(visibility.GetValue());
}

bool IsVisibleAt(const XSI::CRef& object, double frame)
{
    XSI::CRef current = object;
    while (current.IsValid()) {
        const XSI::Parameter visibility(FindViewVisibility(current));
        if (visibility.IsValid() && !static_cast<bool>(visibility.GetValue(frame)))
            return false;
        const XSI::CRef parent = XSI::X3DObject(current).GetParent();
        if (parent == current)
            return true;
        current = parent;
    }
    return true;
}

} // namespace tq4x
