#include "cli/TimeOfChange.h"

namespace tq4x::cli
{

std::int64_t TimeOfChange(const std::filesystem::path& file)
{
    std::error_code error;
    const std::filesystem::file_time_type time = std::filesystem::last_write_time(file, error);
    return error ? 0 : std::int64_t{time.time_since_epoch().count()};
}

} // namespace tq4x::cli
