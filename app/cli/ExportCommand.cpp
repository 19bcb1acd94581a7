#include <algorithm>
#include <array>
#include <cstdlib>

#include <xsi_application.h>

#include "cli/Command.h"
#include "cli/ExportReport.h"
#include "cli/ExportRequest.h"
#include "cli/FindAuthor.h"
#include "cli/FindObject.h"
#include "cli/HostConnection.h"
#include "cli/OutputFolder.h"
#include "cli/ReplaceFile.h"
#include "cli/SetVariable.h"
#include "cli/Terminal.h"
#include "cli/ToolFolder.h"
#include "cli/Version.h"
#include "cli/WrittenFiles.h"
#include "preview/MakePage.h"
#include "scene/Session.h"
#include "scene/Text.h"

namespace tq4x::cli
{
namespace
{

namespace Host = XSI::Host;

/// Texts of the exporter which say that a file or folder could not be written.
constexpr std::array<std::string_view, 3> OutputProblems = {"Can't open file(", "Can't create folder(",
                                                            "Can't write file("};

ExitCode CodeOf(const gltf::OpenedScene& scene)
{
    switch (scene.Status) {
    case gltf::SceneStatus::Open:
        return Done;
    case gltf::SceneStatus::BadScene:
        return BadInput;
    case gltf::SceneStatus::NoClip:
        return WrongUsage;
    }
    return BadInput;
}

/// The files hold these texts as they stand, so markup in them makes files that no reader takes.
void WarnAboutMarkup(const ExportRequest& request, const std::string& author, Console& console)
{
    for (const std::string& text : {request.Name, request.Scene.filename().string(), author}) {
        const std::size_t sign = text.find_first_of("&<>\"");
        if (sign != std::string::npos) {
            console.Tell(Severity::Warning, text,
                         std::string("The name holds ") + text[sign] +
                             ", which the exported files take as it stands; readers will refuse them.");
        }
    }
}

XSI::CValueArray ToArray(const std::vector<std::string>& texts)
{
    XSI::CValueArray array;
    for (const std::string& text : texts) {
        array.Add(Host::FromUtf8(text));
    }
    return array;
}

XSI::CStatus CallPlugin(const ExportRequest& request)
{
    XSI::CValueArray arguments;
    if (request.SettingsFile) {
        arguments.Add(Host::FromUtf8(*request.SettingsFile));
    }
    arguments.Add(Host::FromUtf8(request.Name));
    arguments.Add(Host::FromUtf8(request.Folder));
    if (!request.SettingsFile) {
        arguments.Add(ToArray(request.KeyValues));
    }
    XSI::CValue result;
    const char* const command =
        request.SettingsFile ? "TQ4X_ForPennonExportSettingFile" : "TQ4X_ForPennonExport";
    return XSI::Application().ExecuteCommand(command, arguments, result);
}

bool IsOutputProblem(const Message& message)
{
    return message.Kind == Severity::Error &&
           std::ranges::any_of(OutputProblems,
                               [&](std::string_view start) { return message.Text.starts_with(start); });
}

/// Any error that was told counts, also where the plug-in calls its work a success.
ExitCode JudgeExport(XSI::CStatus status, const Console& console)
{
    if (std::ranges::any_of(console.Messages(), IsOutputProblem)) {
        return BadOutput;
    }
    return status.Succeeded() && console.CountOf(Severity::Error) == 0 ? Done : Failed;
}

/// One export, step by step. Each step answers whether the next may follow.
class Exporter
{
public:
    Exporter(ExportRequest request, const Arguments& arguments, Console& console)
        : m_request(std::move(request)),
          m_arguments(arguments),
          m_console(console),
          m_connection(console, m_request.Opening)
    {}

    ExitCode Run()
    {
        ExitCode code = LoadPlugin(m_arguments, m_console);
        code = code == Done ? Open() : code;
        code = code == Done ? Select() : code;
        code = code == Done ? CheckFolder() : code;
        std::vector<WrittenFiles::File> files;
        if (code == Done) {
            code = Export(files);
        }
        code = WriteSideFiles(files, code);
        m_console.Summarize();
        GiveHints();
        return code;
    }

private:
    ExitCode Fail(ExitCode code, const std::string& text)
    {
        m_console.Error(text);
        return code;
    }

    ExitCode Open()
    {
        const gltf::OpenedScene scene = gltf::OpenScene(m_request.Scene, m_request.Opening);
        TellRemarks(scene.Remarks, m_console);
        m_inputs = scene.Files;
        m_inputs.insert(m_inputs.end(), m_request.Inputs.begin(), m_request.Inputs.end());
        if (CodeOf(scene) != Done) {
            m_console.Tell(Severity::Error, m_request.Scene.string(), scene.Error);
        }
        CheckInterrupt();
        return CodeOf(scene);
    }

    ExitCode Select()
    {
        XSI::Selection selection = XSI::Application().GetSelection();
        for (const std::string& name : m_request.Selected) {
            const FoundObject found = FindObject(name);
            if (!found.Error.empty()) {
                return Fail(WrongUsage, found.Error);
            }
            selection.Add(found.Object);
        }
        return Done;
    }

    ExitCode CheckFolder()
    {
        const std::string problem = FindFolderProblem(m_request.Folder);
        return problem.empty() ? Done : Fail(BadOutput, problem);
    }

    ExitCode Export(std::vector<WrittenFiles::File>& files)
    {
        WarnAboutMarkup(m_request, FindAuthor(), m_console);
        const WrittenFiles written(m_request.Folder);
        const XSI::CStatus status = CallPlugin(m_request);
        files = written.Collect();
        for (const WrittenFiles::File& file : files) {
            m_console.Result(file.Path.string() + "  " + std::to_string(file.Size) + " bytes");
        }
        return JudgeExport(status, m_console);
    }

    void GiveHints()
    {
        const auto isAboutSize = [](const Message& message) {
            return message.Text.starts_with("Texture size is wrong");
        };
        if (!m_request.Opening.FitTextures && std::ranges::any_of(m_console.Messages(), isAboutSize)) {
            m_console.Hint("--fit-textures brings pictures to a size that textures can have.");
        }
    }

    /// Report, page and dependency file. They are written also for a failed export, the latter only if it
    /// wrote anything.
    ExitCode WriteSideFiles(const std::vector<WrittenFiles::File>& files, ExitCode code)
    {
        if (m_request.DependencyFile && !files.empty()) {
            code = WriteSideFile(*m_request.DependencyFile, FormatDependencies(files, m_inputs), code);
        }
        if (m_request.PreviewFile) {
            code = WritePage(*m_request.PreviewFile, MakePage(files, code), code);
        }
        if (m_request.ReportFile) {
            code = WriteSideFile(*m_request.ReportFile,
                                 FormatReport(m_request, code, files, m_console.Messages()), code);
        }
        return code;
    }

    ExitCode WriteSideFile(const std::string& file, const std::string& text, ExitCode code)
    {
        return ReplaceFile(file, text) ? code : Fail(BadOutput, "The file " + file + " can't be written.");
    }

    ExitCode WritePage(const std::string& file, const std::string& page, ExitCode code)
    {
        const ExitCode after = WriteSideFile(file, page, code);
        if (after == code) {
            m_console.Result(file + "  " + std::to_string(page.size()) + " bytes");
        }
        return after;
    }

    std::string MakePage(const std::vector<WrittenFiles::File>& files, ExitCode code)
    {
        const auto rate = static_cast<float>(m_request.Opening.FramesPerSecond);
        return preview::MakePage({std::string(VersionLine), m_request.Name, m_request.Scene.string(),
                                  m_request.Folder, code, rate},
                                 files, m_console.Messages());
    }

    ExportRequest m_request;
    const Arguments& m_arguments;
    Console& m_console;
    HostConnection m_connection;
    std::vector<std::filesystem::path> m_inputs;
};

ExitCode RunExport(const Arguments& arguments, Console& console)
{
    const ToolFolder tool;
    const ParsedRequest parsed = ReadExportRequest(arguments, tool.IsInstallation());
    if (!parsed.UsageError.empty()) {
        console.Error(parsed.UsageError);
        return WrongUsage;
    }
    if (parsed.Content.PreviewFile && !preview::HasPage()) {
        console.Error("This program was built without the page that --preview writes.");
        return WrongUsage;
    }
    if (!parsed.InputError.empty()) {
        console.Error(parsed.InputError);
        return BadInput;
    }
    if (const auto author = arguments.Value("--author")) {
        SetVariable("TQ4X_AUTHOR", *author);
    }
    ProvideTemporaryFolder();
    return Exporter(parsed.Content, arguments, console).Run();
}

} // namespace

const Command ExportCommand = {"export", "SCENE", 1, 1, "Exports a glTF scene.", ExportOptionSpecs(),
                               RunExport};

} // namespace tq4x::cli
