#pragma once

#include "scene/PluginLoader.h"

#include <dlfcn.h>

namespace tq4x::test
{

/// Loads the plug-in that is linked into the test program: its callbacks are found by name, as the host finds
/// those of a library.
inline XSI::Plugin LoadLinkedPlugin()
{
    return XSI::Host::LoadPlugin([](const char* name) { return dlsym(RTLD_DEFAULT, name); });
}

} // namespace tq4x::test
