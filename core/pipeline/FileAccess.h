#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tq4x
{

// The border to the file system: texts of paths become the system's own here and nowhere else. One source
// file for each system holds what differs.

/// The path as the file system takes it. Empty for a text with a zero byte in it, which no system can hold.
std::filesystem::path FilePath(std::string_view path);

/// The other way round, for names that the file system lists: the text of a path in the system's code page.
/// Characters that this does not have become "?".
std::string PathOfFile(const std::filesystem::path& file);

/// Opens an existing file for reading and writing, without touching it; nullptr if that is refused.
std::FILE* OpenForUpdate(const std::filesystem::path& path);

/// What becomes of the line ends that are written to a file.
enum class LineEnds
{
    Native, ///< they become those of the platform's text files
    AsGiven
};

/// Creates a file that does not exist yet; nullptr if it exists (a link that leads nowhere included) or can't
/// be made.
std::FILE* CreateNewFile(const std::filesystem::path& path, LineEnds lineEnds);

/// True if the path names anything at all.
bool PathExists(std::string_view path);

/// The bytes of a regular file; nothing if it can't be read or is larger than `sizeLimit`.
std::optional<std::string> ReadFileText(std::string_view path, std::size_t sizeLimit);

} // namespace tq4x
