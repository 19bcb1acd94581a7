// The commands that run one export: with options as arguments, and with options from a settings file.

#include "export/CommandArguments.h"
#include "export/ExportDriver.h"
#include "export/HostCommands.h"
#include "export/HostLog.h"
#include "pipeline/ExportOptions.h"
#include "pipeline/SettingsFile.h"

#include <xsi_application.h>
#include <xsi_argumentarray.h>
#include <xsi_command.h>

#include <string>
#include <vector>

namespace tq4x
{
namespace
{

/// A single text counts as a list of one.
std::vector<std::string> TextsOf(const XSI::CValue& value)
{
    std::vector<std::string> texts;
    const XSI::CValueArray values = value;
    for (LONG i = 0; i < values.GetCount(); ++i)
        texts.push_back(TextOf(values[i]));
    return texts;
}

/// Name and folder given to the command win over those of the file.
void ReplaceOutput(ExportOptions& options, const std::string& name, const std::string& folder)
{
    if (!name.empty())
        options.OutputFileName = name;
    if (!folder.empty())
        options.OutputFolder = folder;
}

/// Runs the export if its options could be loaded; after any failure the user sees the log.
XSI::CStatus ExportIfLoaded(bool isLoaded)
{
    XSI::CStatus status = XSI::CStatus::Fail;
    if (isLoaded) {
        ResolveExportFrames();
        status = RunExport();
    }
    if (!status.Succeeded())
        OpenScriptEditor();
    return status;
}

} // namespace
} // namespace tq4x

SICALLBACK TQ4X_ForPennonExport_Init(XSI::CRef& reference)
{
    XSI::Command command(XSI::Context(reference).GetSource());
    XSI::ArgumentArray arguments = command.GetArguments();
    arguments.Add("sceneName");
    arguments.Add("outputFolder");
    arguments.Add("arguments");
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonExport_Execute(XSI::CRef& reference)
{
    tq4x::InstallHostLog();
    const XSI::CValueArray arguments = tq4x::ArgumentsOf(XSI::Context(reference));
    tq4x::ExportOptions* options = tq4x::CreateOptions();
    if (options != nullptr)
        options->LoadFromArguments(
            {tq4x::TextOf(arguments[0]), tq4x::TextOf(arguments[1]), tq4x::TextsOf(arguments[2])});
    return tq4x::ExportIfLoaded(options != nullptr);
}

SICALLBACK TQ4X_ForPennonExportSettingFile_Init(XSI::CRef& reference)
{
    XSI::Command command(XSI::Context(reference).GetSource());
    XSI::ArgumentArray arguments = command.GetArguments();
    arguments.Add("q3esFileName");
    arguments.Add("sceneName");
    arguments.Add("outputFolder");
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonExportSettingFile_Execute(XSI::CRef& reference)
{
    tq4x::InstallHostLog();
    const XSI::CValueArray arguments = tq4x::ArgumentsOf(XSI::Context(reference));
    tq4x::ExportOptions* options = tq4x::CreateOptions();
    const bool isLoaded = options != nullptr && tq4x::ReadSettingsFile(tq4x::TextOf(arguments[0]), *options);
    if (isLoaded)
        tq4x::ReplaceOutput(*options, tq4x::TextOf(arguments[1]), tq4x::TextOf(arguments[2]));
    return tq4x::ExportIfLoaded(isLoaded);
}
