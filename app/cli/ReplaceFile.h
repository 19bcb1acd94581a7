#pragma once

#include <filesystem>
#include <string_view>

namespace tq4x::cli
{

/// Writes a whole file: under a temporary name beside it, then renamed over it. False, with the old file as
/// it was, if anything of that failed.
[[nodiscard]] bool ReplaceFile(const std::filesystem::path& file, std::string_view text);

} // namespace tq4x::cli
