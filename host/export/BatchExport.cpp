// Exports every scene of a folder, each with the settings that it keeps itself.

#include "export/BatchExport.h"

#include "export/CommandArguments.h"
#include "export/ExportDialog.h"
#include "export/HostCommands.h"
#include "export/HostLog.h"
#include "pages/PageParameters.h"
#include "pages/PageProperty.h"
#include "pipeline/FileAccess.h"
#include "pipeline/MessageLog.h"
#include "pipeline/PathText.h"
#include "pipeline/Platform.h"

#include <xsi_application.h>
#include <xsi_argumentarray.h>
#include <xsi_command.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tq4x
{
namespace
{

constexpr const char* Type = "TQ4X_ForPennonBatchExportProp";
constexpr const char* InputFolder = "BatchInputFolder";
constexpr const char* OutputFolder = "BatchOutputFolder";
constexpr const char* SceneExtension = ".scn";

constexpr PageParameter Parameters[] = {
    {.Name = InputFolder, .Type = XSI::CValue::siString},
    {.Name = OutputFolder, .Type = XSI::CValue::siString},
};

bool IsFolder(const std::string& path)
{
    std::error_code error;
    return std::filesystem::is_directory(FilePath(path), error);
}

/// The files of a folder that are scenes, in byte order of their names; nothing if the folder can't be
/// listed.
std::optional<std::vector<std::string>> FindSceneNames(const std::string& folder)
{
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entry(FilePath(folder), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code typeError;
        if (entry->path().extension() == SceneExtension && entry->is_regular_file(typeError))
            names.push_back(PathOfFile(entry->path().filename()));
    }
    if (error)
        return std::nullopt;
    std::ranges::sort(names);
    return names;
}

/// The settings of the scene's own property, into the batch's folder, without questions.
XSI::CStatus ExportOpenScene(const std::string& outputFolder)
{
    const XSI::CustomProperty property = GetExportProperty();
    XSI::CString name = property.GetParameterValue("OutputFileName");
    if (name.IsEmpty())
        name = SceneOutputName();
    std::vector<std::string> options = BuildExportArguments(property);
    options.push_back("AlwaysOverwrite");
    return RunExportCommand(name, outputFolder.c_str(), options);
}

XSI::CStatus ExportScene(const std::string& path, const std::string& outputFolder)
{
    XSI::Application().LogMessage(("ExportScene: " + path).c_str(), XSI::siInfoMsg);
    const XSI::CStatus status = RunHostCommand("OpenScene", {path.c_str(), 0, 0});
    return status.Succeeded() ? ExportOpenScene(outputFolder) : status;
}

/// The first scene that fails ends the batch.
XSI::CStatus ExportFolder(const std::string& inputFolder, const std::string& outputFolder)
{
    const std::optional<std::vector<std::string>> names = FindSceneNames(inputFolder);
    if (!names) {
        ReportMessage(MessageCode::OutputFolderWrong, inputFolder);
        return XSI::CStatus::Fail;
    }
    XSI::CStatus status = XSI::CStatus::OK;
    for (const std::string& name : *names) {
        status = ExportScene(AppendPath(inputFolder, name), outputFolder);
        if (!status.Succeeded())
            break;
    }
    return status;
}

XSI::CStatus RunBatch(const std::string& inputFolder, const std::string& outputFolder)
{
    if (!IsFolder(inputFolder)) {
        ReportMessage(MessageCode::OutputFolderWrong, inputFolder);
        return XSI::CStatus::Fail;
    }
    if (!IsFolder(outputFolder) && !CurrentPlatform().MakeFolder(outputFolder)) {
        ReportMessage(MessageCode::OutputFolderWrong, outputFolder);
        return XSI::CStatus::Fail;
    }
    return ExportFolder(inputFolder, outputFolder);
}

} // namespace

XSI::CStatus OpenBatchExport()
{
    const XSI::CustomProperty property = RootProperty(Type);
    XSI::CRefArray properties;
    properties.Add(property);
    if (!InspectHostObjects(properties, InspectMode::Modal))
        return XSI::CStatus::OK;
    return RunHostCommand("TQ4X_ForPennonBatchExport", {property.GetParameterValue(InputFolder),
                                                        property.GetParameterValue(OutputFolder)});
}

} // namespace tq4x

SICALLBACK TQ4X_ForPennonBatchExport_Init(XSI::CRef& reference)
{
    XSI::Command command(XSI::Context(reference).GetSource());
    XSI::ArgumentArray arguments = command.GetArguments();
    arguments.Add("inFldr");
    arguments.Add("outFldr");
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonBatchExport_Execute(XSI::CRef& reference)
{
    tq4x::InstallHostLog();
    const XSI::CValueArray arguments = tq4x::ArgumentsOf(XSI::Context(reference));
    return tq4x::RunBatch(tq4x::TextOf(arguments[0]), tq4x::TextOf(arguments[1]));
}

SICALLBACK TQ4X_ForPennonBatchExportProp_Define(XSI::CRef& reference)
{
    XSI::CustomProperty property(XSI::Context(reference).GetSource());
    tq4x::AddMissingParameters(property, tq4x::Parameters);
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonBatchExportProp_DefineLayout(XSI::CRef& reference)
{
    XSI::PPGLayout layout(XSI::Context(reference).GetSource());
    layout.Clear();
    layout.AddItem(tq4x::InputFolder, "Input Folder", XSI::siControlFolder);
    layout.AddItem(tq4x::OutputFolder, "Output Folder", XSI::siControlFolder);
    return XSI::CStatus::OK;
}
