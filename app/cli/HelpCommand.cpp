#include <algorithm>

#include "cli/Command.h"

namespace tq4x::cli
{
namespace
{

std::string Padded(std::string text, std::size_t width)
{
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

std::string OptionText(const OptionSpec& option)
{
    const std::string letter = option.Letter == 0 ? "    " : std::string("-") + option.Letter + ", ";
    const std::string value = option.ValueName.empty() ? "" : " " + std::string(option.ValueName);
    return "  " + letter + std::string(option.Name) + value;
}

void AppendOptions(std::string& text, std::span<const OptionSpec> options)
{
    constexpr std::size_t Column = 34;
    for (const OptionSpec& option : options) {
        const std::string repeat = option.IsRepeatable ? " (may stand several times)" : "";
        text += Padded(OptionText(option), Column) + " " + std::string(option.Help) + repeat + "\n";
    }
}

ExitCode RunHelp(const Arguments& arguments, Console& console)
{
    if (arguments.Positionals.empty()) {
        console.Result(GeneralHelp());
        return Done;
    }
    const Command* const command = FindCommand(arguments.Positionals[0]);
    if (command == nullptr) {
        console.Error("There is no command \"" + arguments.Positionals[0] + "\".");
        return WrongUsage;
    }
    console.Result(HelpOf(*command));
    return Done;
}

} // namespace

std::string GeneralHelp()
{
    std::string text = "usage: tq4x COMMAND [ARGUMENT]... [OPTION]...\n\n";
    for (const Command* const command : CommandTable()) {
        text += "  " + Padded(std::string(command->Name), 10) + std::string(command->Summary) + "\n";
    }
    return text + "\n\"tq4x help COMMAND\" tells more, \"tq4x --version\" which program this is.";
}

std::string HelpOf(const Command& command)
{
    std::string text = "usage: tq4x " + std::string(command.Name);
    if (!command.Positionals.empty()) {
        text += " " + std::string(command.Positionals);
    }
    text += " [OPTION]...\n\n" + std::string(command.Summary) + "\n\n";
    AppendOptions(text, command.Options);
    AppendOptions(text, CommonOptions());
    text.pop_back();
    return text;
}

const Command HelpCommand = {"help", "[COMMAND]", 0, 1, "Tells what a command does and takes.", {}, RunHelp};

} // namespace tq4x::cli
