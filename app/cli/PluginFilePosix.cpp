#include <dlfcn.h>

#include <xsi_plugin.h>

#include "cli/PluginFile.h"
#include "cli/SetVariable.h"
#include "scene/PluginLoader.h"

namespace tq4x::cli
{
namespace
{

std::string LastError()
{
    const char* const text = dlerror();
    return text == nullptr ? "unknown reason" : text;
}

} // namespace

std::filesystem::path ProgramFolder()
{
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path(".") : program.parent_path();
}

std::filesystem::path FindPluginFile(const std::optional<std::string>& named)
{
    if (named) {
        return *named;
    }
    if (const std::string variable = ReadVariable("TQ4X_PLUGIN"); !variable.empty()) {
        return variable;
    }
    return (ProgramFolder().parent_path() / "lib" / "tq4x" / "TQ4X_ForPennonExport.so");
}

std::string LoadPluginFile(const std::filesystem::path& file)
{
    std::error_code error;
    const auto absolute =
        std::filesystem::absolute(file, error); // a bare name would be looked for in the system
    void* const library = dlopen(absolute.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        return "The plug-in can't be loaded: " + LastError() + ".";
    }
    const XSI::Plugin plugin =
        XSI::Host::LoadPlugin([library](const char* name) { return dlsym(library, name); });
    return plugin.IsValid() ? "" : "The plug-in " + file.string() + " could not be started.";
}

} // namespace tq4x::cli
