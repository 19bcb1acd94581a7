#include <unistd.h>

#include "cli/OutputFolder.h"

namespace tq4x::cli
{

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
    if (access(existing.c_str(), W_OK | X_OK) != 0) {
        return "The folder " + existing.string() + " may not be written.";
    }
    return {};
}

} // namespace tq4x::cli
