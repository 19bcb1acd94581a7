#pragma once

#include <cstdint>
#include <filesystem>

namespace tq4x::cli
{

/// When a file was changed last, as exactly as the system knows it and in its units; 0 if it does not tell.
[[nodiscard]] std::int64_t TimeOfChange(const std::filesystem::path& file);

} // namespace tq4x::cli
