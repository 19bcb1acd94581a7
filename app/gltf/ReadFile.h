#pragma once

#include <cstdint>
#include <filesystem>
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

[[nodiscard]] FileContent ReadFile(const std::filesystem::path& file);

} // namespace tq4x::gltf
