#include <cstdlib>
#include <string>
#include <system_error>

#include "cli/TemporaryFolder.h"

namespace tq4x::cli
{

TemporaryFolder::TemporaryFolder()
{
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
    if (error) {
        return; // an empty parent would mean the current folder
    }
    std::string pattern = (std::filesystem::absolute(parent, error) / "tq4x-XXXXXX").string();
    if (mkdtemp(pattern.data()) != nullptr) {
        m_path = pattern;
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
