#include "cli/PluginFile.h"

#include "cli/SetVariable.h"

namespace tq4x::cli
{

std::filesystem::path FindPluginFile(const std::optional<std::string>& named)
{
    if (named) {
        return *named;
    }
    if (const std::string variable = ReadVariable("TQ4X_PLUGIN"); !variable.empty()) {
        return variable;
    }
    return PluginFolder() / PluginFileName();
}

std::filesystem::path ProgramFolder()
{
    return ProgramFile().parent_path();
}

std::filesystem::path PluginFolder()
{
    return ProgramFolder().parent_path() / "lib" / "tq4x";
}

} // namespace tq4x::cli
