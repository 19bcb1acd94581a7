#pragma once

#include "scene/PluginLoader.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace tq4x::test
{

/// Loads the plug-in that is linked into the test program: its callbacks are found by name, as the host finds
/// those of a library.
inline XSI::Plugin LoadLinkedPlugin()
{
    return XSI::Host::LoadPlugin([](const char* name) {
#ifdef _WIN32
        return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(nullptr), name));
#else
        return dlsym(RTLD_DEFAULT, name);
#endif
    });
}

} // namespace tq4x::test
