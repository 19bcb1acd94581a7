#pragma once

#include "pipeline/ExportOptions.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tq4x
{

/// True for a text without control characters and without any of  : / * ? < > | " \  The empty text passes.
bool IsFileNameLegal(std::string_view name);

/// The same for a folder or a path, which may hold  : / \  too.
bool IsFolderLegal(std::string_view folder);

/// Output folder and output name joined: the path of every output file but the textures, less its extension.
std::string OutputBase(const ExportOptions& options);

/// Path of a copy that the tool merges with: `prefix` and the file part of the path in the folder for
/// temporary files. Nothing where the system names no such folder.
std::optional<std::string> MergeTemporaryPath(const std::string& mergePath, std::string_view prefix);

/// Prefix of the copies that this exporter makes.
inline constexpr std::string_view MergeCopyPrefix = "TQ4X_Softimage_Optimize_";

/// Everything that is tested before an export begins: an output kind is chosen, name and folder are legal,
/// the folder exists or can be made, the file to merge with can be copied for the tool, the reserved
/// registers leave room. All tests run, so that the user sees every fault at once; false if one of them
/// failed.
[[nodiscard]] bool CheckOptions(const ExportOptions& options);

/// Files that make the driver ask before it overwrites, in the order in which they are looked for. The kinds
/// of lights and cameras are crossed here, and textures are never asked for: scripts rely on these questions.
std::vector<std::string> OverwriteCandidates(const ExportOptions& options);

/// True if one of the candidates exists and the options don't say to overwrite it.
bool MustAskToOverwrite(const ExportOptions& options);

/// Text and title of the question.
std::string OverwriteQuestion(const ExportOptions& options);
inline constexpr std::string_view OverwriteTitle = "TQ4X_ForPennonExport";

} // namespace tq4x
