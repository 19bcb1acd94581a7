#include "export/FileChooser.h"

#include <xsi_application.h>

namespace tq4x
{
namespace
{

constexpr const char* Function = "ShowFileBrowser";

/// A text of the script's language. Quotes are doubled; what would end the line is left out.
std::string ScriptText(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"')
            quoted += '"';
        if (c != '\r' && c != '\n')
            quoted += c;
    }
    return quoted + "\"";
}

std::string BuildScript(const std::string& title, const std::string& folder)
{
    const std::string function = Function;
    return "Function " + function +
           "\n"
           "    Dim browser\n"
           "    Set browser = XSIUIToolkit.FileBrowser\n"
           "    browser.DialogTitle = " +
           ScriptText(title) +
           "\n"
           "    browser.InitialDirectory = " +
           ScriptText(folder) +
           "\n"
           "    browser.FileBaseName = \"\"\n"
           "    browser.Filter = \"q3es (*.q3es)|*.q3es|All Files (*.*)|*.*||\"\n"
           "    browser.ShowOpen\n"
           "    " +
           function +
           " = browser.FilePathName\n"
           "End Function\n";
}

} // namespace

std::string ChooseSettingsFile(const std::string& title, const std::string& folder)
{
    XSI::CValue result;
    const XSI::CStatus status = XSI::Application().ExecuteScriptCode(
        BuildScript(title, folder).c_str(), "VBScript", Function, XSI::CValueArray(), result);
    return status.Succeeded() ? std::string(XSI::CString(result).GetAsciiString()) : std::string();
}

} // namespace tq4x
