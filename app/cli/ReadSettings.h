#pragma once

#include <map>
#include <string>

#include "pipeline/ExportOptions.h"

namespace tq4x::cli
{

/// What a settings file holds, or a sentence that says why it is none.
struct SettingsContent
{
    ExportOptions Options;
    std::map<std::string, std::string, std::less<>> Given; ///< keys that stand in the file, with their texts
    std::string Error;                                     ///< empty: read
};

/// Reads a settings file. Takes and refuses the same files as the plug-in.
[[nodiscard]] SettingsContent ReadSettings(const std::string& path);

} // namespace tq4x::cli
