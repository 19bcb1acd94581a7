#pragma once

#include <string_view>

namespace tq4x::cli
{

inline constexpr std::string_view VersionLine = "tq4x " TQ4X_VERSION;

} // namespace tq4x::cli
