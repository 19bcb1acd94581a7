#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tq4x::cli
{

/// An option of a command.
struct OptionSpec
{
    std::string_view Name;      ///< "--output"
    char Letter = 0;            ///< 'o' for -o; 0: none
    std::string_view ValueName; ///< "DIR": takes a value; empty: a switch
    std::string_view Help;
    bool IsRepeatable = false;
};

/// What stands on a command line, sorted by the options of its command.
struct Arguments
{
    std::vector<std::string> Positionals;
    std::map<std::string, std::vector<std::string>, std::less<>> Options; ///< by name, switches with ""

    [[nodiscard]] bool Has(std::string_view option) const { return Options.contains(option); }

    /// The value of an option that may stand once; nothing where it is absent.
    [[nodiscard]] std::optional<std::string> Value(std::string_view option) const;

    /// The values of a repeatable option in their order.
    [[nodiscard]] std::vector<std::string> Values(std::string_view option) const;
};

struct ParsedArguments
{
    Arguments Content;
    std::string Error; ///< a sentence; empty: all is well
};

/// Sorts the words behind a command's name. Options may stand anywhere, as "--name VALUE", "--name=VALUE",
/// "-n VALUE" or "-nVALUE"; switches of one letter may be joined ("-qv"); behind "--" all is positional. A
/// value that begins with "--" must follow a "=".
[[nodiscard]] ParsedArguments ParseArguments(std::span<const std::string> words,
                                             std::span<const OptionSpec> options);

} // namespace tq4x::cli
