#include <cstdio>
#include <exception>

#include "cli/Command.h"
#include "cli/Terminal.h"

int main(int argc, char** argv)
{
    try {
        tq4x::cli::CatchSignals();
        tq4x::cli::PrepareConsole();
        tq4x::cli::Console console(tq4x::cli::ProcessStreams());
        return tq4x::cli::RunProgram(tq4x::cli::CommandWords(argc, argv), console);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "error: Something unexpected failed: %s\n", problem.what());
        return tq4x::cli::Failed;
    }
}
