#include "pipeline/ReproduciblePlatform.h"

#include <map>

namespace tq4x
{
namespace
{

Platform PlatformWith(std::map<std::string, std::string> variables)
{
    Platform platform;
    platform.UserName = [] { return std::string("someone"); };
    platform.Now = [] { return LocalTime{2013, 4, 9, 8, 7, 6}; };
    platform.Environment = [variables](const std::string& name) {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    };
    return MakeReproducible(platform);
}

TEST(ReproduciblePlatform, VariablesFixTimeAndAuthor)
{
    const struct
    {
        const char* Name;
        std::map<std::string, std::string> Variables;
        const char* Date;
        const char* Author;
    } rows[] = {
        {"nothing set", {}, "2013-04-09T08:07:06", "someone"},
        {"epoch", {{"SOURCE_DATE_EPOCH", "0"}}, "1970-01-01T00:00:00", "someone"},
        {"a later moment", {{"SOURCE_DATE_EPOCH", "1700000000"}}, "2023-11-14T22:13:20", "someone"},
        {"a leap day", {{"SOURCE_DATE_EPOCH", "951782399"}}, "2000-02-28T23:59:59", "someone"},
        {"author", {{"TQ4X_AUTHOR", "A & B"}}, "2013-04-09T08:07:06", "A & B"},
        {"no number", {{"SOURCE_DATE_EPOCH", "12x"}}, "2013-04-09T08:07:06", "someone"},
        {"before 1970", {{"SOURCE_DATE_EPOCH", "-1"}}, "2013-04-09T08:07:06", "someone"},
        {"too large", {{"SOURCE_DATE_EPOCH", "253402300800"}}, "2013-04-09T08:07:06", "someone"},
    };

    for (const auto& row : rows) {
        const Platform platform = PlatformWith(row.Variables);
        EXPECT_EQ(DateText(platform.Now()), row.Date) << row.Name;
        EXPECT_EQ(platform.UserName(), row.Author) << row.Name;
    }
}

} // namespace
} // namespace tq4x
