#include <algorithm>
#include <array>

#include "cli/Command.h"

namespace tq4x::cli
{
namespace
{

constexpr std::array Rows = {
    &ExportCommand,   &BatchCommand, &InfoCommand, &CheckCommand,  &ToGltfCommand, &SettingsCommand,
    &CommandsCommand, &PagesCommand, &SetCommand,  &DialogCommand, &RunCommand,    &HelpCommand,
};

constexpr OptionSpec Common[] = {
    {"--help", 'h', "", "say what the command does and takes"},
    {"--quiet", 'q', "", "tell errors only"},
    {"--verbose", 'v', "", "tell notes too"},
};

} // namespace

std::span<const Command* const> CommandTable()
{
    return Rows;
}

const Command* FindCommand(std::string_view name)
{
    const auto found = std::ranges::find_if(Rows, [name](const Command* row) { return row->Name == name; });
    return found == Rows.end() ? nullptr : *found;
}

std::span<const OptionSpec> CommonOptions()
{
    return Common;
}

} // namespace tq4x::cli
