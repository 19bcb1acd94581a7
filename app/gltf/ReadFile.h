#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

namespace tq4x::gltf
{

/// A file as bytes, or a sentence that says why it can't be read. Only regular files are read, so no device
/// and no pipe can block the program.
struct FileContent
{
    std::vector<std::uint8_t> Data;
    std::string Error; ///< empty: read
};

/// Files of more than `sizeLimit` bytes are refused unread.
[[nodiscard]] FileContent ReadFile(const std::filesystem::path& file,
                                   std::uintmax_t sizeLimit = std::numeric_limits<std::uintmax_t>::max());

} // namespace tq4x::gltf
