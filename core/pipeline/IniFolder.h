#pragma once

#include <optional>
#include <string>

namespace tq4x
{

/// The folder of the plug-in's own files below the tool's root, with "\" between its pieces and at its end;
/// nothing where the root is not known.
std::optional<std::string> IniFolder();

/// The same for writing: makes the folders that are missing, with an error where that fails, and warns where
/// the root is not known.
std::optional<std::string> PrepareIniFolder();

} // namespace tq4x
