#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tq4x::cli
{

/// A program to run beside this one.
struct ChildCommand
{
    std::vector<std::string> Words;               ///< the program first, as a path
    std::map<std::string, std::string> Variables; ///< set in its environment, in addition to our own
    std::filesystem::path OutputFile;             ///< takes what it says on both streams
};

struct EndedChild
{
    long Id = 0;
    int Code = 0; ///< its exit code; 128 and the signal's number if one ended it
};

/// The processes that were started and have not been waited for. Those still running when it goes are asked
/// to end, and waited for.
class ChildProcesses
{
public:
    ChildProcesses() = default;
    ChildProcesses(const ChildProcesses&) = delete;
    ChildProcesses& operator=(const ChildProcesses&) = delete;
    ~ChildProcesses();

    /// Starts a program with an empty input. Answers its number, or 0 if it can't be started.
    [[nodiscard]] long Start(const ChildCommand& command);

    /// Waits for one of them to end. There must be one. Throws `InterruptedByUser` if the user wants to end.
    [[nodiscard]] EndedChild Wait();

    [[nodiscard]] std::size_t Count() const { return m_running.size(); }

private:
    std::set<long> m_running;
};

} // namespace tq4x::cli
