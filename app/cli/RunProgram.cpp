#include <algorithm>
#include <exception>
#include <new>

#include "cli/Command.h"
#include "cli/Terminal.h"
#include "cli/Version.h"
#include "gltf/NearestWord.h"
#include "pipeline/TextHelpers.h"

namespace tq4x::cli
{
namespace
{

ExitCode Refuse(Console& console, const std::string& text)
{
    console.Error(text + " \"tq4x help\" tells what there is.");
    return WrongUsage;
}

ExitCode RefuseUnknown(const std::string& name, Console& console)
{
    std::vector<std::string_view> names;
    for (const Command* const command : CommandTable()) {
        names.push_back(command->Name);
    }
    const std::string_view nearest = FindNearestWord(name, names);
    return Refuse(console, "There is no command \"" + name + "\"" +
                               (nearest.empty() ? "." : "; did you mean \"" + std::string(nearest) + "\"?"));
}

std::vector<OptionSpec> AllOptionsOf(const Command& command)
{
    std::vector<OptionSpec> options(command.Options.begin(), command.Options.end());
    options.insert(options.end(), CommonOptions().begin(), CommonOptions().end());
    return options;
}

/// A sentence if there are too few or too many words that are no options.
std::string CheckPositionals(const Command& command, const Arguments& arguments)
{
    const std::size_t count = arguments.Positionals.size();
    if (count < command.LeastPositionals) {
        return "The command \"" + std::string(command.Name) + "\" needs " + std::string(command.Positionals) +
               ".";
    }
    if (count > command.MostPositionals) {
        return "The command \"" + std::string(command.Name) + "\" does not take \"" +
               arguments.Positionals[command.MostPositionals] + "\".";
    }
    return {};
}

void SetVerbosity(const Arguments& arguments, Console& console)
{
    if (arguments.Has("--quiet")) {
        console.SetVerbosity(Verbosity::Quiet);
    } else if (arguments.Has("--verbose")) {
        console.SetVerbosity(Verbosity::Chatty);
    }
}

ExitCode RunCommandWith(const Command& command, std::span<const std::string> words, Console& console)
{
    const ParsedArguments parsed = ParseArguments(words, AllOptionsOf(command));
    if (!parsed.Error.empty()) {
        return Refuse(console, parsed.Error);
    }
    if (parsed.Content.Has("--help")) {
        console.Result(HelpOf(command));
        return Done;
    }
    const std::string problem = CheckPositionals(command, parsed.Content);
    if (!problem.empty()) {
        return Refuse(console, problem);
    }
    SetVerbosity(parsed.Content, console);
    try {
        return command.Run(parsed.Content, console);
    } catch (const InterruptedByUser&) {
        console.Error("Interrupted.");
        return Interrupted;
    } catch (const std::bad_alloc&) {
        console.Error("There is not enough memory.");
        return Failed;
    } catch (const std::exception& error) {
        console.Error(std::string("Something unexpected failed: ") + error.what());
        return Failed;
    }
}

} // namespace

ExitCode RunProgram(std::span<const std::string> words, Console& console)
{
    SetSystemCodePage(CodePageUtf8); // of our copy of the core; the plug-in's keeps the system's
    if (words.empty()) {
        return Refuse(console, "A command is missing.");
    }
    const std::string& name = words[0];
    if (name == "--version") {
        console.Result(VersionLine);
        return Done;
    }
    if (name == "--help" || name == "-h") {
        console.Result(GeneralHelp());
        return Done;
    }
    const Command* const command = FindCommand(name);
    const ExitCode code = command == nullptr ? RefuseUnknown(name, console)
                                             : RunCommandWith(*command, words.subspan(1), console);
    return code == Done && console.HasLostResults() ? BadOutput : code;
}

} // namespace tq4x::cli
