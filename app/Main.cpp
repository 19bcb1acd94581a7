#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "cli/Command.h"
#include "cli/Terminal.h"

int main(int argc, char** argv)
{
    try {
        tq4x::cli::CatchSignals();
        tq4x::cli::Console console(tq4x::cli::ProcessStreams());
        const std::vector<std::string> words(argv + (argc > 0 ? 1 : 0), argv + argc);
        return tq4x::cli::RunProgram(words, console);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "error: Something unexpected failed: %s\n", problem.what());
        return tq4x::cli::Failed;
    }
}
