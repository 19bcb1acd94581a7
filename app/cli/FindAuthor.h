#pragma once

#include <string>

namespace tq4x::cli
{

/// The author that exported files will name: the variable TQ4X_AUTHOR, else the user who is logged on.
[[nodiscard]] std::string FindAuthor();

} // namespace tq4x::cli
