#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>

#include "cli/ReplaceFile.h"
#include "cli/SetVariable.h"
#include "cli/ToolFolder.h"

namespace tq4x::cli
{
namespace
{

namespace fs = std::filesystem;

constexpr const char* RootVariable = "TQ4X_FORPENNON_ROOT";

constexpr std::string_view StarterScript = "#!/bin/sh\n"
                                           "echo 'tq4x: the optimising tool is not installed' >&2\n"
                                           "exit 1\n";

/// Relative paths in XDG_DATA_HOME are to be passed over.
std::optional<fs::path> OwnFolder()
{
    const fs::path data = ReadVariable("XDG_DATA_HOME");
    if (data.is_absolute()) {
        return data / "tq4x";
    }
    const fs::path home = ReadVariable("HOME");
    return home.empty() ? std::nullopt : std::optional(home / ".local" / "share" / "tq4x");
}

/// Puts our starter in its place; false if the folder can't be made or written.
bool Furnish(const fs::path& root)
{
    const fs::path folder = root / "tools" / "BrellStudioStarter";
    const fs::path starter = folder / "BrellStudioStarter.exe";
    std::error_code error;
    if (access(starter.c_str(), X_OK) == 0 && access(root.c_str(), W_OK) == 0) {
        return true;
    }
    fs::create_directories(folder, error);
    if (error || !ReplaceFile(starter, StarterScript)) {
        return false;
    }
    return chmod(starter.c_str(), 0755) == 0;
}

} // namespace

ToolFolder::ToolFolder()
{
    if (const std::string root = ReadVariable(RootVariable); !root.empty()) {
        m_path = root;
        m_isInstallation = true;
        return;
    }
    const auto own = OwnFolder();
    if (own && Furnish(*own)) {
        m_path = *own;
    } else {
        m_path = m_temporary.emplace().Path();
        if (m_path.empty()) {
            return; // the plug-in says itself that it has no such folder
        }
        Furnish(m_path);
    }
    SetVariable(RootVariable, m_path.string());
}

ToolFolder::~ToolFolder()
{
    if (!m_isInstallation) {
        SetVariable(RootVariable, "");
    }
}

} // namespace tq4x::cli
