#include "pipeline/Platform.h"

#include "pipeline/FileAccess.h"

#include <fcntl.h>
#include <pwd.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <system_error>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;

constexpr int FirstInheritableFile = 3; // behind the three standard streams
constexpr int SignalExitCode = 128;     // as shells count a death by signal

std::optional<std::string> ReadEnvironment(const std::string& name)
{
    const char* value = std::getenv(name.c_str());
    if (value == nullptr || *value == '\0')
        return std::nullopt;
    return value;
}

std::string ReadUserName()
{
    std::array<char, 16384> buffer;
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr)
        return found->pw_name;
    return ReadEnvironment("USER").value_or("");
}

LocalTime ReadLocalTime()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

std::string FormatTime(const LocalTime& time)
{
    std::array<char, 48> text;
    const int length =
        std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", time.Hour, time.Minute, time.Second);
    return std::string(text.data(), static_cast<std::size_t>(length));
}

/// A new empty file in a folder; empty if it can't be made.
fs::path MakeTemporaryFile(const fs::path& folder)
{
    std::string name = (folder / ".tq4x_XXXXXX").string();
    const int file = mkostemp(name.data(), O_CLOEXEC);
    return file >= 0 && close(file) == 0 ? fs::path(name) : fs::path();
}

/// True where nothing stands, or a regular file or a link, which a copy may take the place of.
bool IsReplaceable(const fs::path& target)
{
    std::error_code error;
    const fs::file_type type = fs::symlink_status(target, error).type();
    return type == fs::file_type::not_found || type == fs::file_type::regular ||
           type == fs::file_type::symlink;
}

/// The copy takes over the source's permissions. With a source that nobody may write it would stand in the
/// way of the next one, so its owner may always write it.
bool CopyInto(const fs::path& from, const fs::path& to)
{
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, error);
    if (!error)
        fs::permissions(to, fs::perms::owner_write, fs::perm_options::add, error);
    return !error;
}

bool CopyRegularFile(const std::string& from, const std::string& to)
{
    const fs::path target = FilePath(to);
    if (!IsReplaceable(target))
        return false;
    const fs::path temporary = MakeTemporaryFile(target.parent_path());
    if (temporary.empty())
        return false;
    std::error_code error;
    if (CopyInto(FilePath(from), temporary)) {
        fs::rename(temporary, target, error);
        if (!error)
            return true;
    }
    fs::remove(temporary, error);
    return false;
}

bool MakeFolders(const std::string& path)
{
    std::error_code error;
    const fs::path folder = FilePath(path);
    fs::create_directories(folder, error);
    return fs::is_directory(folder, error);
}

/// Waits for a process; its exit code, or nothing if the system does not tell it.
std::optional<int> WaitForExit(pid_t process)
{
    int status = 0;
    while (waitpid(process, &status, 0) < 0)
        if (errno != EINTR)
            return std::nullopt;
    return WIFEXITED(status) ? WEXITSTATUS(status) : SignalExitCode + WTERMSIG(status);
}

/// How a process starts: without files of this one, and with signals that this one may ignore as they are by
/// default.
class StartState
{
public:
    StartState()
    {
        posix_spawn_file_actions_init(&Actions);
        posix_spawnattr_init(&Attributes);
        posix_spawn_file_actions_addclosefrom_np(&Actions, FirstInheritableFile);
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, SIGPIPE);
        sigaddset(&signals, SIGXFSZ);
        posix_spawnattr_setsigdefault(&Attributes, &signals);
        posix_spawnattr_setflags(&Attributes, POSIX_SPAWN_SETSIGDEF);
    }

    StartState(const StartState&) = delete;
    StartState& operator=(const StartState&) = delete;

    ~StartState()
    {
        posix_spawnattr_destroy(&Attributes);
        posix_spawn_file_actions_destroy(&Actions);
    }

    posix_spawn_file_actions_t Actions;
    posix_spawnattr_t Attributes;
};

std::optional<pid_t> StartShell(const std::string& command)
{
    const StartState state;
    std::string shell = "sh", option = "-c", text = command;
    char* const arguments[] = {shell.data(), option.data(), text.data(), nullptr};
    pid_t process = 0;
    const int error = posix_spawn(&process, "/bin/sh", &state.Actions, &state.Attributes, arguments, environ);
    return error == 0 ? std::optional(process) : std::nullopt;
}

int RunInShell(const std::string& command)
{
    const std::string line = "/bin/sh -c \"" + command + "\"";
    const std::optional<pid_t> process = StartShell(command);
    if (!process) {
        std::fprintf(stderr, "Error: My exec process create: %s\n", line.c_str());
        return 1;
    }
    const std::optional<int> exitCode = WaitForExit(*process);
    if (!exitCode)
        std::fprintf(stderr, "Error: My exec process get exit code: %s\n", line.c_str());
    return exitCode.value_or(1);
}

} // namespace

Platform SystemPlatform()
{
    return {ReadUserName,    ReadLocalTime, FormatTime, ReadEnvironment,
            CopyRegularFile, MakeFolders,   RunInShell};
}

} // namespace tq4x
