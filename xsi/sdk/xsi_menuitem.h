#pragma once

#include <xsi_siobject.h>

namespace XSI
{

/// One line of a menu.
class MenuItem : public SIObject
{
public:
    MenuItem() = default;

    MenuItem(const CRef& ref) : SIObject(ref.As(siMenuItemID)) {}

    CString GetLabel() const { return GetName(); }

    /// The callback that a click runs; empty for a separator.
    CString GetCallback() const;
};

} // namespace XSI
