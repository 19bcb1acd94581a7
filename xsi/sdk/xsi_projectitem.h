#pragma once

#include <xsi_siobject.h>
#include <xsi_value.h>

namespace XSI
{

class CValue;
class Parameter;

/// An object with parameters.
class ProjectItem : public SIObject
{
public:
    ProjectItem() = default;

    ProjectItem(const CRef& ref) : SIObject(ref.As(siProjectItemID)) {}

    /// The object's number: given in order of creation, never twice.
    ULONG GetObjectID() const { return GetRef().GetObjectID(); }

    /// The parameter of this name; invalid if there is none.
    Parameter GetParameter(const CString& name) const;

    /// All parameters, in the order in which they were added.
    CRefArray GetParameters() const;

    /// The value of a parameter at a frame; empty if there is no such parameter.
    CValue GetParameterValue(const CString& name, double time = CurrentTime) const;

    /// Sets a parameter's constant. MemberNotFound if there is no such parameter.
    CStatus PutParameterValue(const CString& name, const CValue& value, double time = CurrentTime);

    /// True if any parameter is animated by this kind of source.
    bool IsAnimated(siSourceType type = siAnySource) const;
};

} // namespace XSI
