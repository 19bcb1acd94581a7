#include <dlfcn.h>

#include <xsi_plugin.h>

#include "cli/PluginFile.h"
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

std::filesystem::path ProgramFile()
{
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path("./tq4x") : program;
}

const char* PluginFileName()
{
    return "TQ4X_ForPennonExport.so";
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
