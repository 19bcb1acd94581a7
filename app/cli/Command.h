#pragma once

#include <span>
#include <string_view>

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/ExitCode.h"

namespace tq4x::cli
{

/// A command of the program. Each has a source file of its own and a row in `CommandTable`.
struct Command
{
    std::string_view Name;
    std::string_view Positionals; ///< "SCENE", as the help shows them
    std::size_t LeastPositionals = 0;
    std::size_t MostPositionals = 0;
    std::string_view Summary; ///< a sentence
    std::span<const OptionSpec> Options;
    ExitCode (*Run)(const Arguments& arguments, Console& console) = nullptr;
};

inline constexpr std::size_t AnyNumber = static_cast<std::size_t>(-1);

/// All commands in the order of the help.
[[nodiscard]] std::span<const Command* const> CommandTable();

/// The command of a name, nullptr if there is none.
[[nodiscard]] const Command* FindCommand(std::string_view name);

/// The options that every command has beside its own.
[[nodiscard]] std::span<const OptionSpec> CommonOptions();

/// What "tq4x help" and "tq4x help COMMAND" print.
[[nodiscard]] std::string GeneralHelp();
[[nodiscard]] std::string HelpOf(const Command& command);

/// Runs the program: the words behind its own name.
[[nodiscard]] ExitCode RunProgram(std::span<const std::string> words, Console& console);

// The rows of the table.
extern const Command ExportCommand;
extern const Command InfoCommand;
extern const Command CheckCommand;
extern const Command ToGltfCommand;
extern const Command CommandsCommand;
extern const Command BatchCommand;
extern const Command SettingsCommand;
extern const Command DialogCommand;
extern const Command PagesCommand;
extern const Command SetCommand;
extern const Command RunCommand;
extern const Command HelpCommand;

} // namespace tq4x::cli
