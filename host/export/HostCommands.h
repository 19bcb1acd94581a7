#pragma once

#include <xsi_string.h>
#include <xsi_value.h>

namespace tq4x
{

/// `GetValue` of the host: a preference or a parameter by its full name.
XSI::CValue GetHostValue(const XSI::CString& name);

/// `SetValue` of the host.
void SetHostValue(const XSI::CString& name, const XSI::CValue& value);

/// `OpenView` with the script editor, so that the user sees the log.
void OpenScriptEditor();

/// `DeleteObj` on a full name.
void DeleteHostObject(const XSI::CString& fullName);

} // namespace tq4x
