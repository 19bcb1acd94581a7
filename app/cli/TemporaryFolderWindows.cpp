#include <windows.h>

#include <string>
#include <system_error>

#include "cli/TemporaryFolder.h"

namespace tq4x::cli
{
namespace
{

constexpr int MaxFolders = 10000; // left by processes with our number that were killed

} // namespace

// The system's temporary folder is the user's own.
TemporaryFolder::TemporaryFolder()
{
    std::error_code error;
    const std::filesystem::path parent =
        std::filesystem::absolute(std::filesystem::temp_directory_path(error), error);
    for (int i = 0; !error && i < MaxFolders; ++i) {
        const std::filesystem::path folder =
            parent / ("tq4x-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(i));
        if (std::filesystem::create_directory(folder, error)) {
            m_path = folder;
            return;
        }
    }
}

TemporaryFolder::~TemporaryFolder()
{
    if (!m_path.empty()) {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }
}

} // namespace tq4x::cli
