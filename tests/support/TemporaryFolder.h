#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace tq4x::test
{

/// A fresh folder below the system's temporary folder, removed with all it holds at the end of the scope.
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::random_device device;
        do
            m_path = std::filesystem::temp_directory_path() / ("tq4x-test-" + std::to_string(device()));
        while (!std::filesystem::create_directory(m_path));
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    ~TemporaryFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }

    const std::filesystem::path& Path() const { return m_path; }

    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

} // namespace tq4x::test
