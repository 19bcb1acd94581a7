#include <windows.h>

#include "cli/OutputFolder.h"
#include "cli/PluginFile.h"
#include "cli/SetVariable.h"
#include "cli/ToolPlaces.h"

namespace tq4x::cli
{
namespace
{

namespace fs = std::filesystem;

constexpr const char* StarterFile = "NoToolStarter.exe"; // beside the plug-in

} // namespace

/// The variable for all systems first, so that a batch can give its exports folders of their own.
std::optional<fs::path> FindOwnFolder()
{
    for (const char* const variable : {"XDG_DATA_HOME", "LOCALAPPDATA"}) {
        const fs::path data = ReadVariable(variable);
        if (data.is_absolute()) {
            return data / "tq4x";
        }
    }
    return std::nullopt;
}

bool IsFurnished(const fs::path& root, const fs::path& starter)
{
    std::error_code error;
    return fs::is_regular_file(starter, error) && FindFolderProblem(root).empty();
}

bool WriteStarter(const fs::path& starter)
{
    return CopyFileW((PluginFolder() / StarterFile).c_str(), starter.c_str(), FALSE) != 0;
}

} // namespace tq4x::cli
