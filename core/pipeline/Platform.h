#pragma once

#include <functional>
#include <optional>
#include <string>

namespace tq4x
{

/// A moment in local time.
struct LocalTime
{
    int Year = 0;
    int Month = 1; ///< 1 to 12
    int Day = 1;   ///< 1 to 31
    int Hour = 0;
    int Minute = 0;
    int Second = 0;
};

/// What the core asks of the operating system, as slots that a program or a test may replace. Texts are in
/// the system's code page, paths may hold both separators.
struct Platform
{
    /// Name of the logged-on user; empty if the system has none.
    std::function<std::string()> UserName;

    std::function<LocalTime()> Now;

    /// Hour, minute and second in the system's default time format.
    std::function<std::string(const LocalTime&)> TimeText;

    /// Value of an environment variable; nothing where it is not set or empty.
    std::function<std::optional<std::string>(const std::string& name)> Environment;

    /// Copies a regular file over the target; false, with the target as it was, if that failed. The owner may
    /// write the copy even where the source may not be written.
    std::function<bool(const std::string& from, const std::string& to)> CopyOver;

    /// Creates a folder and its missing parents; true if the folder exists afterwards.
    std::function<bool(const std::string& path)> MakeFolder;

    /// Runs a command text in the system's shell, waits for its end without a time limit and answers with its
    /// exit code. A failed start and an unreadable exit code are told on the standard error stream and count
    /// as 1. Files of this process are not inherited.
    std::function<int(const std::string& command)> RunCommand;
};

/// The slots as this system fills them.
Platform SystemPlatform();

/// The process-wide table, filled by `SystemPlatform` at first.
Platform& CurrentPlatform();

/// Creates a folder and its missing parents. True if it exists afterwards, else false with an error that
/// names the path.
[[nodiscard]] bool EnsureFolder(const std::string& path);

/// The moment as "2013-04-09T08:07:06".
std::string DateText(const LocalTime& time);

/// Value of the variable that names the tool installation; nothing where it is not set or empty.
std::optional<std::string> ToolRoot();

} // namespace tq4x
