#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "cli/ChildProcess.h"
#include "cli/Terminal.h"

namespace tq4x::cli
{
namespace
{

constexpr int SignalBase = 128;

std::vector<char*> PointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> EnvironmentWith(const std::map<std::string, std::string>& variables)
{
    std::vector<std::string> environment;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string text = *entry;
        if (!variables.contains(text.substr(0, text.find('=')))) {
            environment.push_back(text);
        }
    }
    for (const auto& [name, value] : variables) {
        environment.push_back(name + "=" + value);
    }
    return environment;
}

/// Redirections of a process to be started.
class FileActions
{
public:
    explicit FileActions(const std::filesystem::path& output)
    {
        posix_spawn_file_actions_init(&Actions);
        posix_spawn_file_actions_addopen(&Actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&Actions, STDOUT_FILENO, output.c_str(),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0666);
        posix_spawn_file_actions_adddup2(&Actions, STDOUT_FILENO, STDERR_FILENO);
    }

    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    ~FileActions() { posix_spawn_file_actions_destroy(&Actions); }

    posix_spawn_file_actions_t Actions;
};

int CodeOf(int status)
{
    return WIFEXITED(status) ? WEXITSTATUS(status) : SignalBase + WTERMSIG(status);
}

} // namespace

ChildProcesses::~ChildProcesses()
{
    for (const long id : m_running) {
        kill(static_cast<pid_t>(id), SIGTERM);
    }
    for (const long id : m_running) {
        int status = 0;
        while (waitpid(static_cast<pid_t>(id), &status, 0) < 0 && errno == EINTR) {
        }
    }
}

long ChildProcesses::Start(const ChildCommand& command)
{
    std::vector<std::string> words = command.Words;
    std::vector<std::string> environment = EnvironmentWith(command.Variables);
    const FileActions files(command.OutputFile);
    pid_t id = 0;
    const int error = posix_spawn(&id, words.front().c_str(), &files.Actions, nullptr,
                                  PointersTo(words).data(), PointersTo(environment).data());
    if (error != 0) {
        return 0;
    }
    m_running.insert(id);
    return id;
}

EndedChild ChildProcesses::Wait()
{
    for (;;) {
        CheckInterrupt();
        int status = 0;
        const pid_t id = waitpid(-1, &status, 0);
        if (id > 0 && m_running.erase(id) > 0) {
            return {id, CodeOf(status)};
        }
    }
}

} // namespace tq4x::cli
