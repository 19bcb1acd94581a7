#include "pipeline/ExportChecks.h"

#include "pipeline/FileAccess.h"
#include "pipeline/MessageLog.h"
#include "pipeline/PathText.h"
#include "pipeline/Platform.h"
#include "pipeline/TextHelpers.h"

#include <algorithm>

namespace tq4x
{
namespace
{

constexpr std::string_view ForbiddenInFolders = "*?<>|\"";
constexpr std::string_view ForbiddenInNames = ":/*?<>|\"\\";
constexpr unsigned char FirstPrintable = 0x20;

constexpr std::int32_t UniformRegisters = 60;
constexpr std::int32_t RegistersOfBone = 3;
constexpr std::int32_t RegistersOfScaledBone = 6;

/// Goes by characters: the second byte of a double-byte character may look like a forbidden one.
bool HasNoneOf(std::string_view text, std::string_view forbidden)
{
    for (std::size_t i = 0, length = 0; i < text.size(); i += length) {
        length = CharacterLength(text, i);
        if (static_cast<unsigned char>(text[i]) < FirstPrintable ||
            forbidden.find(text[i]) != std::string_view::npos)
            return false;
    }
    return true;
}

bool Fail(MessageCode code, const std::string& detail = {})
{
    ReportMessage(code, detail);
    return false;
}

bool CheckOutputKinds(const ExportOptions& options)
{
    const bool any = options.OutputQmdl || options.OutputQtex || options.OutputQskla || options.OutputQmata ||
                     options.OutputQlgt || options.OutputQcam || options.OutputQmdla || options.OutputQenv;
    return any || Fail(MessageCode::NoOutputFile);
}

bool CheckOutputName(const ExportOptions& options)
{
    const bool isGood = !options.OutputFileName.empty() && IsFileNameLegal(options.OutputFileName);
    return isGood || Fail(MessageCode::OutputFileNameWrong);
}

/// Makes the folder only if its text is good: a bad one must not leave anything behind.
bool CheckOutputFolder(const ExportOptions& options)
{
    if (options.OutputFolder.empty() || !IsFolderLegal(options.OutputFolder))
        return Fail(MessageCode::OutputFolderWrong);
    return EnsureFolder(options.OutputFolder);
}

bool CheckMerge(const ExportOptions& options)
{
    if (!options.MergeQmdl)
        return true;
    const std::string& path = options.MergeQmdlPath;
    if (path.empty() || !IsFolderLegal(path))
        return Fail(MessageCode::MergeQmdlPathWrong);
    const std::optional<std::string> copy = MergeTemporaryPath(path, MergeCopyPrefix);
    return (copy && CurrentPlatform().CopyOver(path, *copy)) || Fail(MessageCode::MergeQmdlPathWrong, path);
}

bool CheckRegisters(const ExportOptions& options)
{
    const std::int32_t limit =
        UniformRegisters - (options.NonUniformScale ? RegistersOfScaledBone : RegistersOfBone);
    const bool isGood =
        options.MaxReservedUniformRegisters >= 0 && options.MaxReservedUniformRegisters <= limit;
    return isGood || Fail(MessageCode::MaxReservedUniformRegistersWrong);
}

} // namespace

bool IsFileNameLegal(std::string_view name)
{
    return HasNoneOf(name, ForbiddenInNames);
}

bool IsFolderLegal(std::string_view folder)
{
    return HasNoneOf(folder, ForbiddenInFolders);
}

std::string OutputBase(const ExportOptions& options)
{
    return AppendPath(options.OutputFolder, options.OutputFileName);
}

std::optional<std::string> MergeTemporaryPath(const std::string& mergePath, std::string_view prefix)
{
    const std::optional<std::string> folder = CurrentPlatform().Environment("TEMP");
    if (!folder)
        return std::nullopt;
    return *folder + "\\" + std::string(prefix) + FilePart(mergePath);
}

bool CheckOptions(const ExportOptions& options)
{
    bool isGood = CheckOutputKinds(options);
    isGood = CheckOutputName(options) && isGood;
    isGood = CheckOutputFolder(options) && isGood;
    isGood = CheckMerge(options) && isGood;
    return CheckRegisters(options) && isGood;
}

std::vector<std::string> OverwriteCandidates(const ExportOptions& options)
{
    const struct
    {
        bool IsAsked;
        const char* Extension;
    } kinds[] = {
        {options.OutputQmdl, ".qmdl"}, {options.OutputQskla, ".qskla"}, {options.OutputQmata, ".qmata"},
        {options.OutputQlgt, ".qcam"}, // crossed, see the header
        {options.OutputQcam, ".qlgt"}, {options.OutputQmdla, ".qmdla"}, {options.OutputQenv, ".qenv"},
    };

    std::vector<std::string> paths;
    for (const auto& kind : kinds)
        if (kind.IsAsked)
            paths.push_back(OutputBase(options) + kind.Extension);
    return paths;
}

bool MustAskToOverwrite(const ExportOptions& options)
{
    return !options.AlwaysOverwrite &&
           std::ranges::any_of(OverwriteCandidates(options),
                               [](const std::string& path) { return PathExists(path); });
}

std::string OverwriteQuestion(const ExportOptions& options)
{
    return "\"" + OutputBase(options) + ".*\" already exists.\nOverwrite?";
}

} // namespace tq4x
