#pragma once

#include <string>
#include <vector>

// What the program asks of the system about terminals and signals.
namespace tq4x::cli
{

[[nodiscard]] bool IsInputTerminal();
[[nodiscard]] bool IsErrorTerminal();

/// Lets a terminal take what we write as UTF-8, with colours, and give what is typed so.
void PrepareConsole();

/// The words behind the program's own name, in UTF-8, from what `main` is given.
[[nodiscard]] std::vector<std::string> CommandWords(int argc, char** argv);

/// Thrown out of the host's callbacks when the user pressed Ctrl-C, so that everything on the way is put in
/// order: files that are being written are removed.
struct InterruptedByUser
{};

/// Lets Ctrl-C and a request to end be noticed instead of killing the process. The second one ends it at
/// once. Writing to a pipe that nobody reads any more becomes an ordinary error.
void CatchSignals();

/// Throws `InterruptedByUser` if the user wants the program to end.
void CheckInterrupt();

} // namespace tq4x::cli
