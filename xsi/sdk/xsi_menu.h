#pragma once

#include <xsi_menuitem.h>
#include <xsi_siobject.h>

namespace XSI
{

/// A menu of a plug-in.
class Menu : public SIObject
{
public:
    Menu() = default;

    Menu(const CRef& ref) : SIObject(ref.As(siMenuID)) {}

    CStatus AddCallbackItem(const CString& label, const CString& callback, MenuItem& added);
    CStatus AddSeparatorItem(MenuItem& added);

    /// In order.
    CRefArray GetItems() const;
};

} // namespace XSI
