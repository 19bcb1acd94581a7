#pragma once

#include "pipeline/Platform.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace tq4x::test
{

/// A folder for the tool installation, with a starter that does nothing, for the time of a test.
class ToolInstallation
{
public:
    ToolInstallation()
    {
        std::filesystem::create_directories(m_root / "tools/BrellStudioStarter");
        std::ofstream(m_root / "tools/BrellStudioStarter/BrellStudioStarter.exe") << "starter";
        m_former = CurrentPlatform();
        CurrentPlatform().Environment = [root = m_root.Path().string()](const std::string& name) {
            return name == "TQ4X_FORPENNON_ROOT" ? std::optional(root) : std::nullopt;
        };
        CurrentPlatform().RunCommand = [this](const std::string& command) {
            Commands.push_back(command);
            return 0;
        };
    }

    ToolInstallation(const ToolInstallation&) = delete;
    ToolInstallation& operator=(const ToolInstallation&) = delete;

    ~ToolInstallation() { CurrentPlatform() = m_former; }

    const std::filesystem::path& Root() const { return m_root.Path(); }

    std::vector<std::string> Commands;

private:
    TemporaryFolder m_root;
    Platform m_former;
};

} // namespace tq4x::test
