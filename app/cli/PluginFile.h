#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tq4x::cli
{

/// Where the plug-in is: the file that the user names, else $TQ4X_PLUGIN, else the one that belongs to this
/// program, in `PluginFolder`.
[[nodiscard]] std::filesystem::path FindPluginFile(const std::optional<std::string>& named);

/// Loads the plug-in's library and lets it register itself with the host. Answers why that was not possible;
/// an empty text: it is loaded, and stays so until the process ends.
[[nodiscard]] std::string LoadPluginFile(const std::filesystem::path& file);

/// "TQ4X_ForPennonExport.so", or as the system calls libraries.
[[nodiscard]] const char* PluginFileName();

/// ../lib/tq4x beside the program's own folder.
[[nodiscard]] std::filesystem::path PluginFolder();

/// The running program, and its folder.
[[nodiscard]] std::filesystem::path ProgramFile();
[[nodiscard]] std::filesystem::path ProgramFolder();

} // namespace tq4x::cli
