#include <windows.h>

#include "cli/SetVariable.h"
#include "scene/NarrowText.h"

// The compiler's run-time has a copy of the environment; the plug-in and new processes see the system's.

namespace tq4x::cli
{

void SetVariable(const std::string& name, const std::string& value)
{
    SetEnvironmentVariableW(XSI::WideFromUtf8(name).c_str(), XSI::WideFromUtf8(value).c_str());
}

std::string ReadVariable(const std::string& name)
{
    const std::wstring wideName = XSI::WideFromUtf8(name);
    std::wstring value(GetEnvironmentVariableW(wideName.c_str(), nullptr, 0), L'\0');
    const DWORD length =
        GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size()));
    value.resize(length < value.size() ? length : 0);
    return XSI::Utf8FromWide(value);
}

} // namespace tq4x::cli
