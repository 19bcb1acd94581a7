#include <windows.h>

#include "cli/OutputFolder.h"

namespace tq4x::cli
{
namespace
{

/// Rights depend on much; the sure way to know is to make a file, which the system takes away again at once.
bool CanHoldFiles(const std::filesystem::path& folder)
{
    const std::filesystem::path probe =
        folder / (".tq4x_" + std::to_string(GetCurrentProcessId()) + ".probe");
    const HANDLE file = CreateFileW(probe.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    return file != INVALID_HANDLE_VALUE && CloseHandle(file) != 0;
}

} // namespace

std::string FindFolderProblem(const std::filesystem::path& folder)
{
    namespace fs = std::filesystem;
    std::error_code error;
    fs::path existing = fs::absolute(folder, error);
    while (existing.has_relative_path() && !fs::exists(fs::symlink_status(existing, error))) {
        existing = existing.parent_path();
    }
    if (!fs::is_directory(existing, error)) {
        return existing.string() + " is not a folder.";
    }
    if (!CanHoldFiles(existing)) {
        return "The folder " + existing.string() + " may not be written.";
    }
    return {};
}

} // namespace tq4x::cli
