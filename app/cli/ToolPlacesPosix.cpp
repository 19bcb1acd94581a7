#include <sys/stat.h>
#include <unistd.h>

#include "cli/ReplaceFile.h"
#include "cli/SetVariable.h"
#include "cli/ToolPlaces.h"

namespace tq4x::cli
{
namespace
{

namespace fs = std::filesystem;

constexpr std::string_view StarterScript = "#!/bin/sh\n"
                                           "echo 'tq4x: the optimising tool is not installed' >&2\n"
                                           "exit 1\n";

} // namespace

/// Relative paths in XDG_DATA_HOME are to be passed over.
std::optional<fs::path> FindOwnFolder()
{
    const fs::path data = ReadVariable("XDG_DATA_HOME");
    if (data.is_absolute()) {
        return data / "tq4x";
    }
    const fs::path home = ReadVariable("HOME");
    return home.empty() ? std::nullopt : std::optional(home / ".local" / "share" / "tq4x");
}

bool IsFurnished(const fs::path& root, const fs::path& starter)
{
    return access(starter.c_str(), X_OK) == 0 && access(root.c_str(), W_OK) == 0;
}

bool WriteStarter(const fs::path& starter)
{
    return ReplaceFile(starter, StarterScript) && chmod(starter.c_str(), 0755) == 0;
}

} // namespace tq4x::cli
