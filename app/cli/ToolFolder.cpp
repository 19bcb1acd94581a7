#include "cli/ToolFolder.h"

#include "cli/SetVariable.h"
#include "cli/ToolPlaces.h"

namespace tq4x::cli
{
namespace
{

namespace fs = std::filesystem;

constexpr const char* RootVariable = "TQ4X_FORPENNON_ROOT";

/// Puts our starter in its place; false if the folder can't be made or written.
bool Furnish(const fs::path& root)
{
    const fs::path folder = root / "tools" / "BrellStudioStarter";
    const fs::path starter = folder / "BrellStudioStarter.exe";
    if (IsFurnished(root, starter)) {
        return true;
    }
    std::error_code error;
    fs::create_directories(folder, error);
    return !error && WriteStarter(starter);
}

} // namespace

ToolFolder::ToolFolder()
{
    if (const std::string root = ReadVariable(RootVariable); !root.empty()) {
        m_path = root;
        m_isInstallation = true;
        return;
    }
    const auto own = FindOwnFolder();
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
