#pragma once

#include <filesystem>
#include <optional>

#include "cli/TemporaryFolder.h"

namespace tq4x::cli
{

/// The folder of the authoring tool's installation, which the plug-in finds by the variable
/// TQ4X_FORPENNON_ROOT. Where the variable is not set this makes a folder of our own, $XDG_DATA_HOME/tq4x, so
/// that settings of the last export persist. In the place of the tool's starter it holds a small one of ours
/// that says that the tool is not installed and fails. Where that folder can't be made a temporary one takes
/// its place until the program ends; where not even that can be made there is none, and the variable stays
/// unset.
class ToolFolder
{
public:
    ToolFolder();
    ToolFolder(const ToolFolder&) = delete;
    ToolFolder& operator=(const ToolFolder&) = delete;
    ~ToolFolder();

    /// Whether the user has an installation of the tool.
    [[nodiscard]] bool IsInstallation() const { return m_isInstallation; }

    /// Empty if there is no folder.
    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
    bool m_isInstallation = false;
    std::optional<TemporaryFolder> m_temporary;
};

} // namespace tq4x::cli
