#pragma once

#include <xsi_projectitem.h>
#include <xsi_status.h>

namespace XSI
{

class CustomProperty;
class Property;

/// An object that can carry properties.
class SceneItem : public ProjectItem
{
public:
    SceneItem() = default;

    SceneItem(const CRef& ref) : ProjectItem(ref.As(siSceneItemID)) {}

    /// The properties on this object, in the order in which they were added.
    CRefArray GetProperties() const;

    /// Adds a property of this type. A type that a plug-in defines gives a custom property, and its `_Define`
    /// callback runs. An empty name stands for the type.
    Property AddProperty(const CString& type, bool branch = false, const CString& name = CString()) const;
    CStatus AddProperty(const CString& type, bool branch, const CString& name, Property& added) const;

    /// Adds a custom property without parameters. Nothing is called.
    CustomProperty AddCustomProperty(const CString& name, bool branch = false) const;
};

} // namespace XSI
