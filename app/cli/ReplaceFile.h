#pragma once

#include <filesystem>
#include <string_view>

namespace tq4x::cli
{

/// Writes a whole file: under a temporary name beside it, then renamed over it. False, with the old file as
/// it was, if anything of that failed. What a link leads to is replaced, not the link; permissions stay, and
/// a file that may not be written is left alone. Pipes and devices like /dev/stdout are written to instead.
[[nodiscard]] bool ReplaceFile(const std::filesystem::path& file, std::string_view text);

} // namespace tq4x::cli
