#include "cli/ReplaceFile.h"

#include <fstream>
#include <random>

namespace tq4x::cli
{

bool ReplaceFile(const std::filesystem::path& file, std::string_view text)
{
    std::filesystem::path temporary = file;
    temporary += ".tmp" + std::to_string(std::random_device()());
    std::error_code error;
    {
        std::ofstream stream(temporary, std::ios::binary);
        stream << text << std::flush;
        if (!stream.good()) {
            std::filesystem::remove(temporary, error);
            return false;
        }
    }
    std::filesystem::rename(temporary, file, error);
    if (error) {
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
    }
    return !error;
}

} // namespace tq4x::cli
