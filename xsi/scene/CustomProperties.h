#pragma once

#include <string_view>

#include <xsi_customproperty.h>
#include <xsi_ref.h>

namespace XSI::Host
{

/// Adds a custom property without parameters. Nothing is called. Invalid for an owner that can't carry
/// properties.
CustomProperty AddPlainProperty(const CRef& owner, std::string_view type, std::string_view name);

/// The same, then `<type>_Define` of the plug-in that has it; a type that no plug-in defines stays plain.
CustomProperty AddDefinedProperty(const CRef& owner, std::string_view type, std::string_view name);

} // namespace XSI::Host
