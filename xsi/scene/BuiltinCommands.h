#pragma once

#include <optional>
#include <string>

#include <xsi_status.h>
#include <xsi_value.h>

namespace XSI::Host
{

/// Runs a command of the host itself; nothing if there is none of this name. They are
/// GetValue(name), SetValue(name, value): a preference, or a parameter by its full name;
/// DeleteObj(objects), SelectObj(objects), DeselectAll(), FrameSelection();
/// InspectObj(properties, keywords, title, lock mode, throw): opens a page for each type of property;
/// OpenView(name); OpenScene(path, ...).
/// Objects are given as a reference, a list of them, or full names joined by ",". An object that isn't found
/// is passed over; the command then answers InvalidArgument.
std::optional<CStatus> RunBuiltinCommand(const std::string& name, const CValueArray& arguments,
                                         CValue& result);

/// Runs a built-in command or one that a plug-in registered, and records the call.
CStatus RunCommand(const std::string& name, const CValueArray& arguments, CValue& result);

} // namespace XSI::Host
