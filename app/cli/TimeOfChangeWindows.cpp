#include <windows.h>

#include "cli/TimeOfChange.h"

namespace tq4x::cli
{

// The standard library knows whole seconds alone, and a second is enough for two exports.
std::int64_t TimeOfChange(const std::filesystem::path& file)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data) == 0) {
        return 0;
    }
    return static_cast<std::int64_t>(data.ftLastWriteTime.dwHighDateTime) << 32 |
           data.ftLastWriteTime.dwLowDateTime;
}

} // namespace tq4x::cli
