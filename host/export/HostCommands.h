#pragma once

#include <xsi_ref.h>
#include <xsi_status.h>
#include <xsi_string.h>
#include <xsi_value.h>

#include <initializer_list>

namespace tq4x
{

/// Runs a command of the host or of the plug-in by name; its result is not looked at.
XSI::CStatus RunHostCommand(const char* command, std::initializer_list<XSI::CValue> arguments);

/// `GetValue` of the host: a preference or a parameter by its full name.
XSI::CValue GetHostValue(const XSI::CString& name);

/// `SetValue` of the host.
void SetHostValue(const XSI::CString& name, const XSI::CValue& value);

/// `OpenView` with the script editor, so that the user sees the log.
void OpenScriptEditor();

/// `DeleteObj` on a full name.
void DeleteHostObject(const XSI::CString& fullName);

/// How `InspectObj` shows a page.
enum class InspectMode
{
    Recycled = 2, ///< in the window of the page before it
    Modal = 4,    ///< the command ends when the user closes the page
};

/// `InspectObj` on properties: all of one type open on one page. False if the user cancelled it.
bool InspectHostObjects(const XSI::CRefArray& properties, InspectMode mode);

/// `SelectObj` with the full names of the objects, in place of what was selected.
void SelectHostObjects(const XSI::CRefArray& objects);

/// `DeselectAll` of the host.
void DeselectHostObjects();

} // namespace tq4x
