#pragma once

namespace tq4x::cli
{

/// What the program answers to its caller. The numbers are part of its interface.
enum ExitCode : int
{
    Done = 0,
    Failed = 1,        ///< the export failed, or a check found errors
    WrongUsage = 2,    ///< the command line makes no sense
    BadInput = 3,      ///< an input can't be read or is invalid
    BadOutput = 4,     ///< an output can't be written
    NoPlugin = 5,      ///< the plug-in can't be loaded
    BatchFailed = 6,   ///< a batch had failing scenes
    Interrupted = 130, ///< the user pressed Ctrl-C
};

} // namespace tq4x::cli
