#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/ChildProcess.h"
#include "cli/Console.h"
#include "gltf/JsonValue.h"

namespace tq4x::cli
{

enum class JobState
{
    Waiting, ///< at the end of a batch: not started
    Done,
    Failed,
};

/// One scene of a batch.
struct BatchJob
{
    std::filesystem::path Scene;
    std::string Name; ///< of the files that it becomes
    JobState State = JobState::Waiting;
    std::string Problem; ///< why it can't be started
    long Process = 0;
    int ExitCode = 0;
    std::filesystem::path Folder;  ///< of its own, for temporary files
    gltf::JsonValue Report;        ///< of its export; of its files those that bear the scene's name
    std::vector<Message> Messages; ///< of the report
    std::size_t FileCount = 0;
};

/// The scenes of a folder (.gltf, .glb, .scn) in the order of their names. One whose files would have the
/// names of another's is failed from the start.
[[nodiscard]] std::vector<BatchJob> FindJobs(const std::filesystem::path& folder);

/// The export of a job. `folder` is made: temporary files and the plug-in's own files of this export are kept
/// there, so that exports at one time don't meet.
[[nodiscard]] ChildCommand BuildJobCommand(BatchJob& job, const std::string& output,
                                           const std::vector<std::string>& words,
                                           const std::filesystem::path& folder);

/// Takes over what the export of a job reported when it ended.
void ReadJobReport(BatchJob& job, int exitCode);

/// "done, 3 files", "failed (exit code 1), 2 errors", "not started".
[[nodiscard]] std::string ResultText(const BatchJob& job);

/// What became of all scenes, as JSON.
[[nodiscard]] std::string FormatBatchReport(const std::vector<BatchJob>& jobs);

} // namespace tq4x::cli
