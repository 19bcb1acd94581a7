#include "pipeline/ReproduciblePlatform.h"

#include <charconv>
#include <chrono>
#include <utility>

namespace tq4x
{
namespace
{

/// The latest moment whose year has four digits.
constexpr std::int64_t LastSecond = 253402300799;

std::optional<std::int64_t> ParseSeconds(const std::string& text)
{
    std::int64_t seconds = 0;
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, seconds);
    const bool isMoment = error == std::errc{} && end == last && seconds >= 0 && seconds <= LastSecond;
    return isMoment ? std::optional(seconds) : std::nullopt;
}

LocalTime TimeInUtc(std::int64_t seconds)
{
    using namespace std::chrono;
    const sys_seconds moment{std::chrono::seconds(seconds)};
    const auto midnight = floor<days>(moment);
    const year_month_day date{midnight};
    const hh_mm_ss time{moment - midnight};
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(time.hours().count()),
            static_cast<int>(time.minutes().count()),
            static_cast<int>(time.seconds().count())};
}

} // namespace

Platform MakeReproducible(Platform platform)
{
    const auto epoch = platform.Environment("SOURCE_DATE_EPOCH");
    const std::optional<std::int64_t> seconds = epoch ? ParseSeconds(*epoch) : std::nullopt;
    if (seconds)
        platform.Now = [seconds = *seconds] { return TimeInUtc(seconds); };
    const auto author = platform.Environment("TQ4X_AUTHOR");
    if (author)
        platform.UserName = [author = *author] { return author; };
    return platform;
}

} // namespace tq4x
