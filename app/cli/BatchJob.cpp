#include "cli/BatchJob.h"

#include <algorithm>
#include <set>

#include "cli/PluginFile.h"
#include "cli/SetVariable.h"
#include "gltf/ReadFile.h"
#include "gltf/SceneError.h"

namespace tq4x::cli
{
namespace
{

using gltf::JsonArray;
using gltf::JsonObject;
using gltf::JsonValue;

constexpr const char* ToolRootVariable = "TQ4X_FORPENNON_ROOT";
constexpr const char* ReportName = "report.json";

bool IsScene(const std::filesystem::directory_entry& entry)
{
    std::error_code error;
    const std::filesystem::path extension = entry.path().extension();
    return (extension == ".gltf" || extension == ".glb" || extension == ".scn") &&
           entry.is_regular_file(error);
}

/// A folder that looks like the tool's installation, with a folder of its own for the plug-in's files.
void LinkInstallation(const std::filesystem::path& root, const std::filesystem::path& copy)
{
    std::error_code error;
    std::filesystem::create_directories(copy / "tools", error);
    const std::filesystem::path tools = std::filesystem::absolute(root, error) / "tools";
    for (const auto& entry : std::filesystem::directory_iterator(tools, error)) {
        if (entry.path().filename() != "DccPlugin") {
            std::filesystem::create_symlink(entry.path(), copy / "tools" / entry.path().filename(), error);
        }
    }
}

std::string TextOf(const JsonValue& object, std::string_view key)
{
    const JsonValue* const found = object.Find(key);
    return found != nullptr && found->String() != nullptr ? *found->String() : std::string();
}

std::size_t SizeOf(const JsonValue& object, std::string_view key)
{
    const JsonValue* const found = object.Find(key);
    return found != nullptr && found->Array() != nullptr ? found->Array()->size() : 0;
}

Severity SeverityOf(std::string_view word)
{
    return word == "error" ? Severity::Error : word == "warning" ? Severity::Warning : Severity::Information;
}

void ReadMessages(BatchJob& job)
{
    const JsonValue* const messages = job.Report.Find("messages");
    for (const JsonValue& message :
         messages != nullptr && messages->Array() != nullptr ? *messages->Array() : JsonArray()) {
        job.Messages.push_back(
            {SeverityOf(TextOf(message, "severity")), TextOf(message, "object"), TextOf(message, "text"), 1});
    }
}

/// Leaves the files of the report that bear the scene's name. Exports that run at one time see each other's
/// files come, and textures may belong to several scenes.
void KeepOwnFiles(BatchJob& job)
{
    auto* const members = std::get_if<JsonObject>(&job.Report.Content);
    if (members == nullptr) {
        return;
    }
    for (gltf::JsonMember& member : *members) {
        if (auto* const files = std::get_if<JsonArray>(&member.Value.Content);
            member.Key == "files" && files != nullptr) {
            std::erase_if(*files, [&](const JsonValue& file) {
                const std::filesystem::path path = TextOf(file, "path");
                return path.stem() != job.Name || path.extension() == ".qtex";
            });
        }
    }
}

/// The report, or what the export said instead, which is then its only message.
void ReadReportFile(BatchJob& job)
{
    const gltf::FileContent report = gltf::ReadFile(job.Folder / ReportName);
    try {
        job.Report = gltf::ParseJson(std::string(report.Data.begin(), report.Data.end()));
    } catch (const gltf::SceneError&) {
        const gltf::FileContent said = gltf::ReadFile(job.Folder / "output.txt");
        const std::string text(said.Data.begin(), said.Data.end());
        job.Messages.push_back(
            {Severity::Error, "", text.empty() ? "The export ended without a word." : text, 1});
    }
}

std::size_t CountOf(const BatchJob& job, Severity severity)
{
    return static_cast<std::size_t>(std::ranges::count(job.Messages, severity, &Message::Kind));
}

std::string Counted(std::size_t count, const std::string& what)
{
    return count == 0 ? "" : ", " + std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

const char* WordOf(JobState state)
{
    switch (state) {
    case JobState::Waiting:
        return "not started";
    case JobState::Done:
        return "done";
    case JobState::Failed:
        return "failed";
    }
    return "failed";
}

} // namespace

std::vector<BatchJob> FindJobs(const std::filesystem::path& folder)
{
    std::vector<BatchJob> jobs;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        if (IsScene(entry)) {
            BatchJob job;
            job.Scene = entry.path();
            job.Name = entry.path().stem().string();
            jobs.push_back(std::move(job));
        }
    }
    std::ranges::sort(jobs, {}, [](const BatchJob& job) { return job.Scene.filename().string(); });
    std::set<std::string> names;
    for (BatchJob& job : jobs) {
        if (!names.insert(job.Name).second) {
            job.State = JobState::Failed;
            job.Problem = "Another scene of the folder is exported as \"" + job.Name + "\" already.";
        }
    }
    return jobs;
}

ChildCommand BuildJobCommand(BatchJob& job, const std::string& output, const std::vector<std::string>& words,
                             const std::filesystem::path& folder)
{
    std::error_code error;
    job.Folder = folder;
    std::filesystem::create_directories(folder / "temp", error);
    ChildCommand command;
    command.Words = {(ProgramFolder() / "tq4x").string(), "export", "--output=" + output,
                     "--name=" + job.Name, "--report=" + (folder / ReportName).string()};
    command.Words.insert(command.Words.end(), words.begin(), words.end());
    command.Words.insert(command.Words.end(), {"--", job.Scene.string()});
    command.OutputFile = folder / "output.txt";
    command.Variables["TEMP"] = (folder / "temp").string();
    if (const std::string root = ReadVariable(ToolRootVariable); !root.empty()) {
        LinkInstallation(root, folder / "root");
        command.Variables[ToolRootVariable] = (folder / "root").string();
    } else {
        command.Variables["XDG_DATA_HOME"] = (folder / "data").string();
    }
    return command;
}

void ReadJobReport(BatchJob& job, int exitCode)
{
    job.ExitCode = exitCode;
    job.State = exitCode == 0 ? JobState::Done : JobState::Failed;
    ReadReportFile(job);
    KeepOwnFiles(job);
    ReadMessages(job);
    job.FileCount = SizeOf(job.Report, "files");
}

std::string ResultText(const BatchJob& job)
{
    const std::string code = job.ExitCode == 0 ? "" : " (exit code " + std::to_string(job.ExitCode) + ")";
    return WordOf(job.State) + code + Counted(job.FileCount, "file") +
           Counted(CountOf(job, Severity::Error), "error") +
           Counted(CountOf(job, Severity::Warning), "warning");
}

std::string FormatBatchReport(const std::vector<BatchJob>& jobs)
{
    JsonArray scenes;
    for (const BatchJob& job : jobs) {
        JsonObject scene = {{"scene", JsonValue{job.Scene.string()}},
                            {"result", JsonValue{std::string(WordOf(job.State))}},
                            {"exitCode", JsonValue{std::int64_t{job.ExitCode}}}};
        if (!job.Problem.empty()) {
            scene.push_back({"problem", JsonValue{job.Problem}});
        }
        if (!job.Report.IsNull()) {
            scene.push_back({"export", job.Report});
        }
        scenes.push_back(JsonValue{std::move(scene)});
    }
    return gltf::FormatJson(JsonValue{JsonObject{{"scenes", JsonValue{std::move(scenes)}}}}) + "\n";
}

} // namespace tq4x::cli
