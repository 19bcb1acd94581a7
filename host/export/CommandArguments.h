#pragma once

#include <xsi_context.h>
#include <xsi_string.h>
#include <xsi_value.h>

#include <string>

namespace tq4x
{

/// What a command of the plug-in was called with. Arguments that were left out are empty.
inline XSI::CValueArray ArgumentsOf(const XSI::Context& context)
{
    return context.GetAttribute("Arguments");
}

/// An argument as a text of the core.
inline std::string TextOf(const XSI::CValue& value)
{
    return XSI::CString(value).GetAsciiString();
}

} // namespace tq4x
