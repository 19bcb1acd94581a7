#pragma once

#include <filesystem>
#include <optional>

// What `ToolFolder` asks of the system.
namespace tq4x::cli
{

/// The user's folder for data of ours; it may be missing. Nothing where the system names no place.
[[nodiscard]] std::optional<std::filesystem::path> FindOwnFolder();

/// Whether a starter stands there that can be run, in a folder that may be written.
[[nodiscard]] bool IsFurnished(const std::filesystem::path& root, const std::filesystem::path& starter);

/// Writes the small starter of ours; false if that fails. Its folder exists.
[[nodiscard]] bool WriteStarter(const std::filesystem::path& starter);

} // namespace tq4x::cli
