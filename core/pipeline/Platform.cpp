#include "pipeline/Platform.h"

#include "pipeline/MessageLog.h"
#include "pipeline/ReproduciblePlatform.h"

#include <array>
#include <cstdio>

namespace tq4x
{

Platform& CurrentPlatform()
{
    static Platform platform = MakeReproducible(SystemPlatform());
    return platform;
}

bool EnsureFolder(const std::string& path)
{
    if (CurrentPlatform().MakeFolder(path))
        return true;
    PrintMessage("Can't create folder(" + path + ").", Severity::Error);
    return false;
}

std::string DateText(const LocalTime& time)
{
    std::array<char, 96> text;
    const int length = std::snprintf(text.data(), text.size(), "%d-%02d-%02dT%02d:%02d:%02d", time.Year,
                                     time.Month, time.Day, time.Hour, time.Minute, time.Second);
    return std::string(text.data(), static_cast<std::size_t>(length));
}

std::optional<std::string> ToolRoot()
{
    return CurrentPlatform().Environment("TQ4X_FORPENNON_ROOT");
}

} // namespace tq4x
