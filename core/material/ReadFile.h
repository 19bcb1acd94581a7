#pragma once

#include "pipeline/MessageLog.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace tq4x
{

/// Largest texture file that is read: several times the largest picture with all that a tool may add.
inline constexpr std::size_t MaximumTextureFileSize = std::size_t{256} << 20;

/// The bytes of a file, or why there are none.
struct FileContent
{
    LogResult Result;
    std::string Text;

    std::span<const std::uint8_t> Bytes() const;
};

/// Reads a whole file. Status 1, with "Can't open file: " and the path, if it is missing, no regular file,
/// not readable or larger than `MaximumTextureFileSize`.
FileContent ReadFile(const std::string& path);

} // namespace tq4x
