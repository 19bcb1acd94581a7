#pragma once

#include <xsi_siobject.h>
#include <xsi_value.h>

namespace XSI
{

/// What the host hands to a callback.
class Context : public SIObject
{
public:
    Context() = default;

    Context(const CRef& ref) : SIObject(ref.As(siContextID)) {}

    /// What the callback is about: the command, the menu, the property, the layout, the changed parameter.
    CRef GetSource() const;

    /// Empty if there is none. A command finds its arguments as an array under "Arguments" and leaves its
    /// result under "ReturnValue".
    CValue GetAttribute(const CString& name) const;
    CStatus PutAttribute(const CString& name, const CValue& value);
};

} // namespace XSI
