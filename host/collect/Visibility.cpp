#include "collect/Visibility.h"
#include "export/Each.h"

#include <xsi_parameter.h>
#include <xsi_property.h>
#include <xsi_x3dobject.h>

#include <algorithm>

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

std::vector<XSI::Parameter> FindVisibilityChain(const XSI::CRef& object)
{
    std::vector<XSI::Parameter> chain;
    XSI::CRef current = object;
    while (current.IsValid()) {
        const XSI::Parameter visibility(FindViewVisibility(current));
        if (visibility.IsValid())
            chain.push_back(visibility);
        const XSI::CRef parent = XSI::X3DObject(current).GetParent();
        if (parent == current)
            break;
        current = parent;
    }
    return chain;
}

bool IsVisibleAt(const std::vector<XSI::Parameter>& chain, double frame)
{
    return std::all_of(chain.begin(), chain.end(), [&](const XSI::Parameter& visibility) {
        return static_cast<bool>(visibility.GetValue(frame));
    });
}

bool IsVisibleAt(const XSI::CRef& object, double frame)
{
    return IsVisibleAt(FindVisibilityChain(object), frame);
}

} // namespace tq4x
