#pragma once

#include <string>

namespace tq4x::cli
{

/// Sets a variable of this process's environment, for the plug-in and for what it starts.
void SetVariable(const std::string& name, const std::string& value);

/// The value of a variable, empty where it is not set.
[[nodiscard]] std::string ReadVariable(const std::string& name);

} // namespace tq4x::cli
