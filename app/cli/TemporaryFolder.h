#pragma once

#include <filesystem>

namespace tq4x::cli
{

/// A new folder below the system's temporary one, for this user alone. It goes with all that it holds.
class TemporaryFolder
{
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    /// An absolute path; empty if there is no place for the folder.
    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace tq4x::cli
