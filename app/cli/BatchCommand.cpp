#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <thread>

#include "cli/BatchJob.h"
#include "cli/ChildProcess.h"
#include "cli/Command.h"
#include "cli/ExportRequest.h"
#include "cli/OutputFolder.h"
#include "cli/ReplaceFile.h"
#include "cli/TemporaryFolder.h"
#include "cli/Terminal.h"
#include "pipeline/FileAccess.h"

namespace tq4x::cli
{
namespace
{

using gltf::JsonValue;

constexpr OptionSpec OwnSpecs[] = {
    {"--jobs", 'j', "N", "so many scenes at a time; default: the number of processors"},
    {"--stop-on-error", 0, "", "start no further scene after one has failed"},
    {"--report", 0, "FILE.json", "write what became of each scene as JSON"},
};

/// Options of an export that name files of one scene.
constexpr std::string_view OptionsOfOneScene[] = {"--output", "--name", "--report", "--preview", "--depfile"};

/// The options of an export that each of them gets as they stand here.
std::vector<OptionSpec> ForwardedSpecs()
{
    std::vector<OptionSpec> options;
    std::ranges::copy_if(ExportOptionSpecs(), std::back_inserter(options), [](const OptionSpec& option) {
        return std::ranges::find(OptionsOfOneScene, option.Name) == std::end(OptionsOfOneScene);
    });
    return options;
}

std::span<const OptionSpec> BatchOptionSpecs()
{
    static const std::vector<OptionSpec> options = [] {
        std::vector<OptionSpec> all(std::begin(OwnSpecs), std::end(OwnSpecs));
        std::ranges::copy(ForwardedSpecs(), std::back_inserter(all));
        return all;
    }();
    return options;
}

std::vector<std::string> ForwardedWords(const Arguments& arguments)
{
    std::vector<std::string> words;
    for (const OptionSpec& option : ForwardedSpecs()) {
        for (const std::string& value : arguments.Values(option.Name)) {
            words.push_back(std::string(option.Name) + (option.ValueName.empty() ? "" : "=" + value));
        }
    }
    return words;
}

std::optional<std::size_t> ReadCount(const std::string& text)
{
    std::size_t count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole && count > 0 ? std::optional(count) : std::nullopt;
}

class Batch
{
public:
    Batch(const Arguments& arguments, Console& console, std::size_t jobCount,
          const std::filesystem::path& folder)
        : m_arguments(arguments),
          m_console(console),
          m_jobCount(jobCount),
          m_folder(folder),
          m_jobs(FindJobs(arguments.Positionals[0]))
    {}

    ExitCode Run()
    {
        const std::vector<std::string> words = ForwardedWords(m_arguments);
        while (m_next < m_jobs.size() || m_children.Count() > 0) {
            while (MayStart()) {
                Start(m_jobs[m_next++], words);
            }
            if (m_children.Count() == 0) {
                break;
            }
            Finish(m_children.Wait());
        }
        PrintTable();
        const bool isWritten = WriteReport();
        const bool isDone =
            std::ranges::all_of(m_jobs, [](const BatchJob& job) { return job.State == JobState::Done; });
        return !isDone ? BatchFailed : isWritten ? Done : BadOutput;
    }

private:
    bool MayStart() const
    {
        const bool isStopped = m_hasFailed && m_arguments.Has("--stop-on-error");
        return m_next < m_jobs.size() && m_children.Count() < m_jobCount && !isStopped;
    }

    void Start(BatchJob& job, const std::vector<std::string>& words)
    {
        const std::filesystem::path folder = m_folder / std::to_string(m_next);
        const ChildCommand command = BuildJobCommand(job, m_arguments.Positionals[1], words, folder);
        job.Process = job.State == JobState::Waiting ? m_children.Start(command) : 0;
        if (job.Process == 0) {
            Fail(job, job.Problem.empty() ? "The export can't be started." : job.Problem);
        }
    }

    void Fail(BatchJob& job, const std::string& text)
    {
        job.State = JobState::Failed;
        m_hasFailed = true;
        m_console.Tell(Severity::Error, job.Scene.filename().string(), text);
    }

    void Finish(const EndedChild& child)
    {
        BatchJob& job = *std::ranges::find(m_jobs, child.Id, &BatchJob::Process);
        job.Process = 0; // the system may give the number to another process
        ReadJobReport(job, child.Code);
        m_hasFailed = m_hasFailed || job.State == JobState::Failed;
        for (const Message& message : job.Messages) {
            m_console.Tell(message.Kind, job.Scene.filename().string(),
                           (message.Object.empty() ? "" : message.Object + ": ") + message.Text);
        }
        ++m_finished;
        m_console.Progress(static_cast<double>(m_finished) / static_cast<double>(m_jobs.size()),
                           job.Scene.filename().string());
    }

    void PrintTable()
    {
        std::size_t width = 0;
        for (const BatchJob& job : m_jobs) {
            width = std::max(width, job.Scene.filename().string().size());
        }
        for (const BatchJob& job : m_jobs) {
            std::string line = job.Scene.filename().string();
            line.resize(width + 2, ' ');
            m_console.Result(MakePrintable(line + ResultText(job)));
        }
        const auto failed = std::ranges::count(m_jobs, JobState::Failed, &BatchJob::State);
        m_console.Result(std::to_string(m_jobs.size()) + " scenes, " + std::to_string(failed) + " failed");
    }

    bool WriteReport()
    {
        const auto file = m_arguments.Value("--report");
        if (!file || ReplaceFile(*file, FormatBatchReport(m_jobs))) {
            return true;
        }
        m_console.Error("The file " + *file + " can't be written.");
        return false;
    }

    const Arguments& m_arguments;
    Console& m_console;
    std::size_t m_jobCount;
    const std::filesystem::path& m_folder; ///< for temporary files
    std::vector<BatchJob> m_jobs;
    ChildProcesses m_children;
    std::size_t m_next = 0;
    std::size_t m_finished = 0;
    bool m_hasFailed = false;
};

ExitCode RunBatch(const Arguments& arguments, Console& console)
{
    const std::string& input = arguments.Positionals[0];
    const auto processors = std::max<std::size_t>(1, std::thread::hardware_concurrency());
    const auto text = arguments.Value("--jobs");
    const std::optional<std::size_t> jobCount = text ? ReadCount(*text) : processors;
    if (!jobCount) {
        console.Error("The number of jobs must be a whole number above 0, not \"" + *text + "\".");
        return WrongUsage;
    }
    // What no export can make sense of is refused once, not once for each scene.
    const ParsedRequest request = ReadExportRequest(arguments, true);
    if (!request.UsageError.empty()) {
        console.Error(request.UsageError);
        return WrongUsage;
    }
    if (!request.InputError.empty()) {
        console.Error(request.InputError);
        return BadInput;
    }
    std::error_code error;
    if (!std::filesystem::is_directory(input, error)) {
        console.Error("There is no folder " + input + ".");
        return BadInput;
    }
    const std::string problem = FindFolderProblem(FilePath(arguments.Positionals[1]));
    if (!problem.empty()) {
        console.Error(problem);
        return BadOutput;
    }
    const TemporaryFolder folder; // outlives the processes that work in it
    if (folder.Path().empty()) {
        console.Error("There is no folder for temporary files.");
        return BadOutput;
    }
    return Batch(arguments, console, *jobCount, folder.Path()).Run();
}

} // namespace

const Command BatchCommand = {"batch",
                              "IN_DIR OUT_DIR",
                              2,
                              2,
                              "Exports every scene of a folder, each in a process of its own.",
                              BatchOptionSpecs(),
                              RunBatch};

} // namespace tq4x::cli
