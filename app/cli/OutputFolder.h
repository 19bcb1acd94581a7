#pragma once

#include <filesystem>
#include <string>

namespace tq4x::cli
{

/// Why nothing can be written to a folder, which may be missing but must be possible to make. An empty text:
/// it looks well. Nothing is made.
[[nodiscard]] std::string FindFolderProblem(const std::filesystem::path& folder);

} // namespace tq4x::cli
