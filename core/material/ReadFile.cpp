#include "material/ReadFile.h"

#include "pipeline/FileAccess.h"

#include <optional>
#include <utility>

namespace tq4x
{

std::span<const std::uint8_t> FileContent::Bytes() const
{
    return {reinterpret_cast<const std::uint8_t*>(Text.data()), Text.size()};
}

FileContent ReadFile(const std::string& path)
{
    std::optional<std::string> text = ReadFileText(path, MaximumTextureFileSize);
    if (!text)
        return {{1, "Can't open file: " + path}, {}};
    return {{}, std::move(*text)};
}

} // namespace tq4x
