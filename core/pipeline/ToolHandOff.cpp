#include "pipeline/ToolHandOff.h"

#include "pipeline/ExportChecks.h"
#include "pipeline/FileAccess.h"
#include "pipeline/MessageLog.h"
#include "pipeline/OutputFile.h"
#include "pipeline/PathText.h"
#include "pipeline/Platform.h"

#include <algorithm>

namespace tq4x
{
namespace
{

constexpr std::string_view StarterFile = "tools/BrellStudioStarter/BrellStudioStarter.exe";
constexpr std::string_view OptimizeFolder = "tools/BrellStudio/DccTemporaryDaemon";
constexpr std::string_view ViewerFolder = "tools/BrellStudio/DccTemporary";
constexpr std::string_view ScriptName = "/Startup.py";

bool Fail(MessageCode code, const std::string& detail)
{
    ReportMessage(code, detail);
    return false;
}

/// A path below the tool's root; empty where the root is not known.
std::string BelowRoot(std::string_view path)
{
    const std::optional<std::string> root = ToolRoot();
    if (!root)
        return {};
    return *root + (EndsWithSeparator(*root) ? "" : "/") + std::string(path);
}

/// Whether a command line can hold the path, between double quotes.
bool IsCommandSafe(const std::string& path)
{
    return IsScriptSafe(path) && IsLeftByShell(path);
}

/// The starter must exist, and its path must be one that a command line can hold.
bool CheckStarter(const std::string& starter)
{
    const bool isUsable = !starter.empty() && IsCommandSafe(starter) && PathExists(starter);
    return isUsable || Fail(MessageCode::BrellStudioNotFound, starter);
}

/// The first path that a script can't hold.
std::optional<std::string> FindUnsafePath(const std::vector<std::string>& paths)
{
    const auto found =
        std::ranges::find_if(paths, [](const std::string& path) { return !IsScriptSafe(ScriptPath(path)); });
    return found == paths.end() ? std::nullopt : std::optional<std::string>(*found);
}

bool WriteScript(const std::string& folder, const std::string& text)
{
    const std::string path = folder + std::string(ScriptName);
    OutputFile file;
    if (!EnsureFolder(folder) || !file.Open(path))
        return Fail(MessageCode::CannotOpenFile, path);
    file.Write(text);
    return file.Commit() || Fail(MessageCode::CannotOpenFile, path);
}

std::string Quoted(std::string_view path)
{
    return "\"" + NativePath(path) + "\"";
}

/// Paths that the optimisation script names.
std::vector<std::string> ScriptFiles(const OptimizeJob& job, const std::string& base)
{
    std::vector<std::string> paths = {base + ".qmdl"};
    if (job.Merge)
        paths.push_back(job.MergePath);
    return paths;
}

} // namespace

bool RunOptimization(const ExportOptions& options)
{
    const OptimizeJob job = MakeOptimizeJob(options);
    const std::string starter = BelowRoot(StarterFile);
    if (!CheckStarter(starter))
        return false;
    if (!IsOptimizationAskedFor(job) && !job.Merge)
        return true;
    const std::string base = OutputBase(options);
    if (const std::optional<std::string> path = FindUnsafePath(ScriptFiles(job, base)))
        return Fail(MessageCode::CannotOpenFile, *path);
    if (!WriteScript(BelowRoot(OptimizeFolder), OptimizeScript(job, base, options.OutputFileName)))
        return false;
    if (CurrentPlatform().RunCommand(Quoted(starter) + " -daemon") != 0)
        ReportMessage(MessageCode::OptimizationFailed);
    return true;
}

std::vector<ViewerFile> ListViewerFiles(const ExportOptions& options,
                                        const std::set<std::string>& textureNames)
{
    const struct
    {
        bool IsShown;
        const char* Extension;
    } kinds[] = {
        {options.OutputQmdl, ".qmdl"},
        {options.OutputQskla, ".qskla"},
        {options.OutputQmata, ".qmata"},
        {options.OutputQlgt, ".qlgt"},
        {options.OutputQcam, ".qcam"},
        {options.OutputQmdla, ".qmdla"},
        // What the environment holds is loaded already with either of the two.
        {options.OutputQenv && !options.OutputQlgt && !options.OutputQcam, ".qenv"},
    };

    std::vector<ViewerFile> files;
    for (const auto& kind : kinds)
        if (kind.IsShown)
            files.push_back({OutputBase(options) + kind.Extension, options.OutputFileName});
    if (options.OutputQtex)
        for (const std::string& name : textureNames)
            files.push_back({AppendPath(AppendPath(options.OutputFolder, "Textures"), name + ".qtex"), name});
    return files;
}

bool ShowInViewer(const ExportOptions& options, const std::set<std::string>& textureNames)
{
    const std::string starter = BelowRoot(StarterFile);
    if (starter.empty())
        return CheckStarter(starter);
    const std::vector<ViewerFile> files = ListViewerFiles(options, textureNames);
    const std::string folder = BelowRoot(ViewerFolder);
    const std::string script = folder + std::string(ScriptName);
    std::vector<std::string> paths = {script};
    for (const ViewerFile& file : files)
        paths.push_back(file.Path);
    if (const std::optional<std::string> path = FindUnsafePath(paths); path || !IsCommandSafe(script))
        return Fail(MessageCode::CannotOpenFile, path.value_or(script));
    if (!WriteScript(folder, ViewerScript(files)) || !CheckStarter(starter))
        return false;
    const bool isShown = CurrentPlatform().RunCommand(Quoted(starter) + " " + Quoted(script)) == 0;
    return isShown || Fail(MessageCode::FailedToStartBrellStudio, {});
}

} // namespace tq4x
