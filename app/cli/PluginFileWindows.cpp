#include <windows.h>

#include <array>

#include <xsi_plugin.h>

#include "cli/PluginFile.h"
#include "scene/NarrowText.h"
#include "scene/PluginLoader.h"

namespace tq4x::cli
{
namespace
{

/// What the system says about its last failing call, in English, without full stop and line end.
std::string LastError()
{
    const DWORD code = GetLastError();
    std::array<wchar_t, 512> text;
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        code, MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), text.data(),
                                        static_cast<DWORD>(text.size()), nullptr);
    std::string narrow = XSI::Utf8FromWide({text.data(), length});
    while (!narrow.empty() && (narrow.back() == '.' || narrow.back() == '\n' || narrow.back() == '\r')) {
        narrow.pop_back();
    }
    return narrow.empty() ? "error " + std::to_string(code) : narrow;
}

} // namespace

std::filesystem::path ProgramFile()
{
    std::wstring file(MAX_PATH, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
    while (length == file.size()) { // it was cut
        file.resize(file.size() * 2);
        length = GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
    }
    file.resize(length);
    return file;
}

const char* PluginFileName()
{
    return "TQ4X_ForPennonExport.dll";
}

std::string LoadPluginFile(const std::filesystem::path& file)
{
    std::error_code error;
    const auto absolute =
        std::filesystem::absolute(file, error); // a bare name would be looked for in the system
    const HMODULE library = LoadLibraryExW(absolute.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (library == nullptr) {
        return "The plug-in can't be loaded: " + absolute.string() + ": " + LastError() + ".";
    }
    const XSI::Plugin plugin = XSI::Host::LoadPlugin(
        [library](const char* name) { return reinterpret_cast<void*>(GetProcAddress(library, name)); });
    return plugin.IsValid() ? "" : "The plug-in " + file.string() + " could not be started.";
}

} // namespace tq4x::cli
