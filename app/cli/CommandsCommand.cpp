#include <xsi_application.h>
#include <xsi_argument.h>
#include <xsi_argumentarray.h>
#include <xsi_command.h>
#include <xsi_menu.h>
#include <xsi_menuitem.h>

#include "cli/Command.h"
#include "cli/HostConnection.h"
#include "cli/ToolFolder.h"
#include "scene/PluginLoader.h"
#include "scene/Text.h"

namespace tq4x::cli
{
namespace
{

namespace Host = XSI::Host;

constexpr OptionSpec Specs[] = {
    {"--plugin", 0, "FILE", "load this plug-in; default: $TQ4X_PLUGIN, else the one beside the program"},
};

std::string ArgumentNames(const XSI::Command& command)
{
    std::string names;
    const XSI::ArgumentArray arguments = command.GetArguments();
    for (LONG i = 0; i < arguments.GetCount(); ++i) {
        names += " " + Host::ToUtf8(arguments.GetItem(i).GetName());
    }
    return names;
}

void ListCommands(Console& console)
{
    console.Result("commands");
    const XSI::CRefArray commands = XSI::Application().GetCommands();
    for (LONG i = 0; i < commands.GetCount(); ++i) {
        const XSI::Command command(commands[i]);
        console.Result("  " + Host::ToUtf8(command.GetName()) + ArgumentNames(command));
    }
}

void ListProperties(Console& console)
{
    console.Result("properties");
    for (const std::string& type : Host::RegisteredPropertyTypes()) {
        console.Result("  " + type);
    }
}

void ListMenus(Console& console)
{
    for (const XSI::Menu& menu : Host::RegisteredMenus()) {
        console.Result("menu " + Host::ToUtf8(menu.GetName()));
        const XSI::CRefArray items = menu.GetItems();
        for (LONG i = 0; i < items.GetCount(); ++i) {
            const XSI::MenuItem item(items[i]);
            console.Result("  " + Host::ToUtf8(item.GetName()) + "  " + Host::ToUtf8(item.GetCallback()));
        }
    }
}

ExitCode RunCommands(const Arguments& arguments, Console& console)
{
    const ToolFolder tool;
    const HostConnection connection(console, {});
    if (const ExitCode code = LoadPlugin(arguments, console); code != Done) {
        return code;
    }
    ListCommands(console);
    ListProperties(console);
    ListMenus(console);
    return Done;
}

} // namespace

const Command CommandsCommand = {
    "commands", "", 0, 0, "Lists commands, properties and menus of the plug-in.", Specs, RunCommands};

} // namespace tq4x::cli
