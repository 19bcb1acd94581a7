#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <xsi_menu.h>
#include <xsi_plugin.h>
#include <xsi_status.h>
#include <xsi_value.h>

#include "scene/Records.h"

namespace XSI::Host
{

/// Finds a function of a library by name: what dlsym and its like do. Null if there is none.
using SymbolLookup = std::function<void*(const char* name)>;

/// Callbacks by name, in place of a library: for tests and for plug-ins that are linked in. `XSILoadPlugin`
/// and `XSIUnloadPlugin` get a reference to the plug-in, all others one to a context.
using CallbackTable = std::map<std::string, Callback>;

/// Loads a plug-in: calls `XSILoadPlugin`, then `<name>_Init` for each command and menu that it registered.
/// Invalid, with an error in the log, if the entry point is missing or fails; nothing of the plug-in is kept
/// then. The library must stay loaded until UnloadPlugin or Session::Reset.
Plugin LoadPlugin(const SymbolLookup& find);
Plugin LoadPlugin(const CallbackTable& callbacks);

/// Calls `XSIUnloadPlugin` and forgets all that the plug-in registered.
void UnloadPlugin(const Plugin& plugin);

/// Types of custom properties that plug-ins registered, in order of registration.
std::vector<std::string> RegisteredPropertyTypes();

/// The menus of all plug-ins, in order of registration.
std::vector<Menu> RegisteredMenus();

/// Does what a click on a menu item does. Fail, with an error in the log, if its callback is missing.
CStatus RunMenuItem(const MenuItem& item);

/// The menu item of a callback; invalid if there is none.
MenuItem FindMenuItem(std::string_view callback);

/// A call of a plug-in's function.
struct CallbackCall
{
    CRef Source;
    LONG Event = 0;      ///< Of a page's event.
    CRefArray Inspected; ///< By a page.
    Attributes Values;   ///< Afterwards what the callback left there.
};

/// Runs a callback of the first plug-in that has it, with a context about `source`. Nothing if none has.
std::optional<CStatus> RunCallback(const std::string& name, CallbackCall& call);

} // namespace XSI::Host
