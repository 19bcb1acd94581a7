#include "pipeline/FileAccess.h"

#include "pipeline/PathText.h"

#include <system_error>

namespace tq4x
{

std::filesystem::path FilePath(std::string_view path)
{
    if (path.find('\0') != std::string_view::npos)
        return {};
    return NativePath(path);
}

std::string PathOfFile(const std::filesystem::path& file)
{
    return file.string();
}

bool PathExists(std::string_view path)
{
    std::error_code error;
    return std::filesystem::exists(FilePath(path), error);
}

// "e" closes the file in the processes that are started meanwhile.

std::FILE* OpenForUpdate(const std::filesystem::path& path)
{
    return std::fopen(path.c_str(), "r+e");
}

std::FILE* CreateNewFile(const std::filesystem::path& path, LineEnds)
{
    return std::fopen(path.c_str(), "wxe");
}

} // namespace tq4x
