#include <vector>

#include <xsi_application.h>
#include <xsi_argumentarray.h>
#include <xsi_command.h>

#include "cli/Command.h"
#include "cli/HostConnection.h"
#include "cli/ToolFolder.h"
#include "gltf/NearestWord.h"
#include "scene/Text.h"

namespace tq4x::cli
{
namespace
{

namespace Host = XSI::Host;

constexpr OptionSpec Specs[] = {
    {"--scene", 0, "SCENE", "open this glTF scene first"},
    {"--asset-root", 0, "DIR", "allow files of the scene anywhere below this folder"},
    {"--plugin", 0, "FILE", "load this plug-in; default: $TQ4X_PLUGIN, else the one beside the program"},
};

/// The registered command of a name; invalid if there is none.
XSI::Command FindRegistered(const std::string& name, std::vector<std::string>& names)
{
    const XSI::CRefArray commands = XSI::Application().GetCommands();
    XSI::Command found;
    for (LONG i = 0; i < commands.GetCount(); ++i) {
        const XSI::Command command(commands[i]);
        names.push_back(Host::ToUtf8(command.GetName()));
        if (names.back() == name) {
            found = command;
        }
    }
    return found;
}

/// Words as arguments. A command that takes fewer gets the rest, its last argument included, as one list.
XSI::CValueArray ToArguments(const XSI::Command& command, std::span<const std::string> words)
{
    const auto limit = static_cast<std::size_t>(command.GetArguments().GetCount());
    XSI::CValueArray arguments;
    XSI::CValueArray rest;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool isInList = words.size() > limit && i + 1 >= limit;
        (isInList ? rest : arguments).Add(Host::FromUtf8(words[i]));
    }
    if (rest.GetCount() > 0) {
        arguments.Add(rest);
    }
    return arguments;
}

ExitCode OpenWanted(const Arguments& arguments, const gltf::SceneOptions& options, Console& console)
{
    const auto file = arguments.Value("--scene");
    return file ? OpenInHost(*file, options, console) : Done;
}

ExitCode CallCommand(const Arguments& arguments, Console& console)
{
    const std::string& name = arguments.Positionals[0];
    std::vector<std::string> names;
    const XSI::Command command = FindRegistered(name, names);
    if (!command.IsValid()) {
        const std::vector<std::string_view> words(names.begin(), names.end());
        const std::string_view nearest = FindNearestWord(name, words);
        console.Error("The plug-in has no command \"" + name + "\"" +
                      (nearest.empty() ? "." : "; did you mean \"" + std::string(nearest) + "\"?"));
        return WrongUsage;
    }
    XSI::CValue result;
    const XSI::CStatus status = XSI::Application().ExecuteCommand(
        command.GetName(), ToArguments(command, std::span(arguments.Positionals).subspan(1)), result);
    if (!result.IsEmpty()) {
        console.Result(Host::ToUtf8(result.GetAsText()));
    }
    return status.Succeeded() && console.CountOf(Severity::Error) == 0 ? Done : Failed;
}

ExitCode RunRun(const Arguments& arguments, Console& console)
{
    const ToolFolder tool;
    ProvideTemporaryFolder();
    if (const ExitCode code = LoadPlugin(arguments, console); code != Done) {
        return code;
    }
    gltf::SceneOptions options;
    options.AssetRoot = arguments.Value("--asset-root").value_or("");
    const HostConnection connection(console, options);
    ExitCode code = OpenWanted(arguments, options, console);
    if (code == Done) {
        code = CallCommand(arguments, console);
    }
    console.Summarize();
    return code;
}

} // namespace

const Command RunCommand = {
    "run", "COMMAND [ARGUMENT]...", 1, AnyNumber, "Runs a command of the plug-in.", Specs, RunRun};

} // namespace tq4x::cli
