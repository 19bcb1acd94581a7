#include "export/HostCommands.h"

#include <xsi_application.h>

namespace tq4x
{
namespace
{

XSI::CValue Run(const char* command, std::initializer_list<XSI::CValue> arguments)
{
    XSI::CValueArray values;
    for (const XSI::CValue& argument : arguments)
        values.Add(argument);
    XSI::CValue result;
    XSI::Application().ExecuteCommand(command, values, result);
    return result;
}

} // namespace

XSI::CValue GetHostValue(const XSI::CString& name)
{
    return Run("GetValue", {name});
}

void SetHostValue(const XSI::CString& name, const XSI::CValue& value)
{
    Run("SetValue", {name, value});
}

void OpenScriptEditor()
{
    Run("OpenView", {"Script Editor"});
}

void DeleteHostObject(const XSI::CString& fullName)
{
    Run("DeleteObj", {fullName});
}

} // namespace tq4x
