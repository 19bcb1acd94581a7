#pragma once

#include <string>
#include <vector>

#include "scene/PluginLoader.h"

namespace tq4x::test
{

/// A small plug-in as the host sees one, for tests: a command that joins its arguments, a property type with
/// a page, and a menu. What its callbacks were called with is written down.
struct SamplePlugin
{
    /// The plug-in's functions by their names.
    static XSI::Host::CallbackTable Callbacks();

    /// The same by address, as a library would give them.
    static void* FindSymbol(const char* name);

    /// One line for each call: "Sample_Execute a,b", "SampleProp_PPGEvent 3 Value", ...
    static std::vector<std::string>& Calls();
};

} // namespace tq4x::test
