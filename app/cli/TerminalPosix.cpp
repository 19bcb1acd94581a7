#include <unistd.h>

#include <csignal>

#include "cli/ExitCode.h"
#include "cli/Terminal.h"

namespace tq4x::cli
{
namespace
{

volatile std::sig_atomic_t isInterrupted = 0;

void NoteSignal(int)
{
    if (isInterrupted != 0) {
        _exit(Interrupted);
    }
    isInterrupted = 1;
}

} // namespace

bool IsInputTerminal()
{
    return isatty(STDIN_FILENO) != 0;
}

bool IsErrorTerminal()
{
    return isatty(STDERR_FILENO) != 0;
}

void PrepareConsole() {} // terminals are so already

std::vector<std::string> CommandWords(int argc, char** argv)
{
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

void CatchSignals()
{
    struct sigaction action
    {};

    action.sa_handler = NoteSignal;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN); // a file beyond the user's limit is a failed write
}

void CheckInterrupt()
{
    if (isInterrupted != 0) {
        throw InterruptedByUser();
    }
}

} // namespace tq4x::cli
