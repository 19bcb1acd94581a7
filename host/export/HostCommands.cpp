#include "export/HostCommands.h"

#include <xsi_application.h>

namespace tq4x
{
namespace
{

XSI::CStatus RunFor(XSI::CValue& result, const char* command, std::initializer_list<XSI::CValue> arguments)
{
    XSI::CValueArray values;
    for (const XSI::CValue& argument : arguments)
        values.Add(argument);
    return XSI::Application().ExecuteCommand(command, values, result);
}

XSI::CValue Run(const char* command, std::initializer_list<XSI::CValue> arguments)
{
    XSI::CValue result;
    RunFor(result, command, arguments);
    return result;
}

} // namespace

XSI::CStatus RunHostCommand(const char* command, std::initializer_list<XSI::CValue> arguments)
{
    XSI::CValue result;
    return RunFor(result, command, arguments);
}

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

bool InspectHostObjects(const XSI::CRefArray& properties, InspectMode mode)
{
    const XSI::CString keywords;
    const XSI::CString title;
    const bool mayThrow = false; // a cancelled page answers true instead
    return !static_cast<bool>(
        Run("InspectObj", {properties, keywords, title, static_cast<LONG>(mode), mayThrow}));
}

void SelectHostObjects(const XSI::CRefArray& objects)
{
    const XSI::CString hierarchyLevel;
    const bool isReplacing = true;
    Run("SelectObj", {objects.GetAsText(), hierarchyLevel, isReplacing});
}

void DeselectHostObjects()
{
    Run("DeselectAll", {});
}

} // namespace tq4x
