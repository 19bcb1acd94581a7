#include "gltf/ReadFile.h"

#include <fstream>

namespace tq4x::gltf
{

FileContent ReadFile(const std::filesystem::path& file, std::uintmax_t sizeLimit)
{
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (!fs::exists(status)) {
        return {{}, "The file " + file.string() + " does not exist."};
    }
    if (!fs::is_regular_file(status)) {
        return {{}, file.string() + " is not a regular file."};
    }
    const std::uintmax_t size = fs::file_size(file, error);
    std::ifstream stream(file, std::ios::binary);
    if (error || !stream) {
        return {{}, "The file " + file.string() + " can't be opened."};
    }
    if (size > sizeLimit) {
        return {{}, "The file " + file.string() + " is larger than " + std::to_string(sizeLimit) + " bytes."};
    }
    FileContent content;
    content.Data.resize(size);
    stream.read(reinterpret_cast<char*>(content.Data.data()), static_cast<std::streamsize>(size));
    if (static_cast<std::uintmax_t>(stream.gcount()) != size) {
        return {{}, "The file " + file.string() + " can't be read."};
    }
    return content;
}

} // namespace tq4x::gltf
