#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/Arguments.h"
#include "gltf/OpenScene.h"

namespace tq4x::cli
{

/// What the command line of an export asks for.
struct ExportRequest
{
    std::filesystem::path Scene;
    gltf::SceneOptions Opening;
    std::string Name;                        ///< of the output files, without extension
    std::string Folder;                      ///< that they go to, with the system's own separators
    std::optional<std::string> SettingsFile; ///< set where the plug-in's settings command can do it all
    std::vector<std::string> KeyValues; ///< for the plug-in's export command; unused with a settings file
    std::vector<std::string> Selected;  ///< objects to export; empty: all
    std::optional<std::string> ReportFile;
    std::optional<std::string> PreviewFile;
    std::optional<std::string> DependencyFile;
    std::vector<std::filesystem::path> Inputs; ///< files that were read for the request itself
};

/// The options of "tq4x export" that make a request.
[[nodiscard]] std::span<const OptionSpec> ExportOptionSpecs();

struct ParsedRequest
{
    ExportRequest Content;
    std::string UsageError; ///< a sentence: the command line makes no sense
    std::string InputError; ///< a sentence: the settings file can't be read
};

/// Makes the request. `hasTool` tells whether the optimising tool is installed: without it nothing is asked
/// of it unless the user does. The texts of --set come last, so they win over the settings file and over
/// other options.
[[nodiscard]] ParsedRequest ReadExportRequest(const Arguments& arguments, bool hasTool);

} // namespace tq4x::cli
