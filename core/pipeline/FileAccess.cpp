#include "pipeline/FileAccess.h"

#include <fstream>
#include <system_error>

namespace tq4x
{

std::optional<std::string> ReadFileText(std::string_view path, std::size_t sizeLimit)
{
    const std::filesystem::path file = FilePath(path);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return std::nullopt;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size > sizeLimit)
        return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    std::string text(static_cast<std::size_t>(size), '\0');
    if (!stream.read(text.data(), static_cast<std::streamsize>(text.size())))
        return std::nullopt;
    return text;
}

} // namespace tq4x
