#pragma once

#include <xsi_base.h>
#include <xsi_status.h>

namespace XSI
{

/// Any named object of the host.
class SIObject : public CBase
{
public:
    SIObject() = default;

    SIObject(const CRef& ref) : CBase(ref.As(siSIObjectID)) {}

    CString GetName() const;
    CStatus PutName(const CString& name);

    /// The name with what is needed to find the object: "model.object", "object.property.parameter". The
    /// scene root's name does not stand in the names of the objects below it.
    CString GetFullName() const;

    /// The full name, followed by "#" and the object's number if another object bears the same full name.
    CString GetUniqueName() const;

    /// The type word: "null", "polymsh", "visibility", the type name of a custom property, ...
    CString GetType() const;

    /// What the object hangs on: the parent object, the owner of a property or parameter.
    CRef GetParent() const;

    /// Objects that belong to this one and are not its children, properties or parameters: the projection of
    /// a coordinate set, the envelope of a primitive.
    CRefArray GetNestedObjects() const;
};

} // namespace XSI
