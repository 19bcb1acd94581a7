#pragma once

#include "cli/Console.h"

namespace tq4x::cli
{

/// Prints the pages of the loaded plug-in with what can be set on them: each parameter with the value that it
/// begins with and the values that it may have. Replaces the host's scene.
void ListMarks(Console& console);

} // namespace tq4x::cli
