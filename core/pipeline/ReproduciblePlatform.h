#pragma once

#include "pipeline/Platform.h"

namespace tq4x
{

/// The slots, with what makes the bytes of a file depend on machine and moment fixed where the environment
/// says so: `SOURCE_DATE_EPOCH`, seconds since 1970 in UTC, is the time of every file, and `TQ4X_AUTHOR` the
/// user's name. A program that owns the process sets them before it loads the plug-in. Values that are no
/// such thing are passed over.
Platform MakeReproducible(Platform platform);

} // namespace tq4x
