#include "cli/HostConnection.h"

#include <algorithm>

#include <xsi_customproperty.h>

#include "cli/PluginFile.h"
#include "cli/SetVariable.h"
#include "cli/Terminal.h"
#include "gltf/PageParameters.h"
#include "scene/CreateParameters.h"
#include "scene/CustomProperties.h"
#include "scene/PluginLoader.h"
#include "scene/Session.h"

namespace tq4x::cli
{
namespace
{

namespace Host = XSI::Host;

Severity SeverityOf(XSI::siSeverityType severity)
{
    switch (severity) {
    case XSI::siErrorMsg:
        return Severity::Error;
    case XSI::siWarningMsg:
        return Severity::Warning;
    case XSI::siInfoMsg:
    case XSI::siVerboseMsg:
        return Severity::Information;
    }
    return Severity::Information;
}

Severity SeverityOf(gltf::NoteSeverity severity)
{
    switch (severity) {
    case gltf::NoteSeverity::Warning:
        return Severity::Warning;
    case gltf::NoteSeverity::Information:
        return Severity::Information;
    }
    return Severity::Information;
}

/// A box without a choice is a result; a question is asked where somebody can answer.
LONG AnswerBox(const Host::MessageBox& box, Console& console, bool& isRefused)
{
    if (box.Buttons == XSI::siMsgOkOnly) {
        console.Result(box.Title + ": " + MakePrintable(box.Text));
        return XSI::siMsgOk;
    }
    if (!console.CanAsk()) {
        console.Error(box.Text + " Nobody can be asked, so the answer is no; --overwrite answers yes.");
        isRefused = true;
    }
    const bool isYes = console.Ask(box.Text);
    if (box.Buttons == XSI::siMsgOkCancel) {
        return isYes ? XSI::siMsgOk : XSI::siMsgCancel;
    }
    return isYes ? XSI::siMsgYes : XSI::siMsgNo;
}

double FractionOf(const Host::ProgressState& state)
{
    const LONG range = state.Maximum - state.Minimum;
    return range > 0 ? static_cast<double>(state.Value - state.Minimum) / static_cast<double>(range) : 0.0;
}

/// Scenes of the host keep the settings of their export. One that holds none begins with the plug-in's
/// defaults: settings of the export before it would give its files the name of another scene.
void ProvideExportSettings()
{
    const std::string type(gltf::ExportSettingsType);
    const std::vector<std::string> types = Host::RegisteredPropertyTypes();
    const XSI::SceneItem root(XSI::CRef::FromObjectID(Host::Session::Current().Root));
    if (std::ranges::find(types, type) != types.end() && !Host::FindProperty(root, type).IsValid()) {
        Host::AddDefinedProperty(root, type, type);
    }
}

} // namespace

ExitCode LoadPlugin(const Arguments& arguments, Console& console)
{
    const std::string problem = LoadPluginFile(FindPluginFile(arguments.Value("--plugin")));
    if (problem.empty()) {
        return Done;
    }
    console.Error(problem);
    return NoPlugin;
}

ExitCode OpenInHost(const std::filesystem::path& scene, const gltf::SceneOptions& options, Console& console)
{
    const gltf::OpenedScene opened = gltf::OpenScene(scene, options);
    TellRemarks(opened.Remarks, console);
    if (opened.Status == gltf::SceneStatus::Open) {
        return Done;
    }
    console.Tell(Severity::Error, scene.string(), opened.Error);
    return BadInput;
}

void TellRemarks(const gltf::Notes& remarks, Console& console)
{
    for (const gltf::Note& note : remarks) {
        console.Tell(SeverityOf(note.Severity), note.Object, note.Text);
    }
}

HostConnection::HostConnection(Console& console, const gltf::SceneOptions& options)
{
    Host::Slots& slots = Host::Session::Current().Fill;
    slots.Log = [&console](const Host::LogEntry& entry) {
        CheckInterrupt();
        console.Tell(SeverityOf(entry.Severity), "", entry.Text);
    };
    slots.AnswerMessageBox = [&console, this](const Host::MessageBox& box) {
        return AnswerBox(box, console, m_isRefused);
    };
    slots.Progress = [&console](const Host::ProgressState& state) {
        CheckInterrupt();
        if (state.IsVisible) {
            console.Progress(FractionOf(state), state.StatusText);
        }
        return false;
    };
    slots.OpenScene = [&console, options](const std::string& path) {
        if (OpenInHost(path, options, console) != Done) {
            return XSI::CStatus(XSI::CStatus::Fail);
        }
        ProvideExportSettings();
        return XSI::CStatus(XSI::CStatus::OK);
    };
}

HostConnection::~HostConnection()
{
    Host::Session::Current().Fill = {};
}

void ProvideTemporaryFolder()
{
    std::error_code error;
    if (ReadVariable("TEMP").empty()) {
        SetVariable("TEMP", std::filesystem::temp_directory_path(error).string());
    }
}

} // namespace tq4x::cli
