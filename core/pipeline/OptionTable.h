#pragma once

#include "pipeline/ExportOptions.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace tq4x
{

// One table drives every vocabulary of the options: the settings file, the texts of the export command, the
// parameters of the dialog, and the help. Defaults come from `ExportOptions{}`; the table never repeats them.

/// The field of the record that a row speaks of.
using OptionField =
    std::variant<std::string ExportOptions::*, bool ExportOptions::*, std::uint32_t ExportOptions::*,
                 std::int32_t ExportOptions::*, float ExportOptions::*>;

/// A word and the value that it stands for (0 and 1 for a boolean field). Where two words stand for one
/// value, the first is written.
struct OptionWord
{
    std::uint32_t Value = 0;
    std::string_view Word;
};

using OptionWords = std::span<const OptionWord>;

/// How the export command reads the value of a key.
enum class CommandForm : std::int32_t
{
    Typed = 0,   ///< by the field's type: a text, "true" for a boolean, an integer or a decimal
    Words = 1,   ///< a word of the row; any other text gives `OtherWord`
    Integer = 2, ///< an integer also for a boolean field, where all but 0 is true
    Switch = 3,  ///< any value at all, or none, sets it
};

/// How the dialog holds the field in a parameter.
enum class ParameterForm : std::int32_t
{
    Typed = 0,   ///< by the field's type: a text, a boolean, an integer or a float
    Words = 1,   ///< a text, one of the row's words
    Integer = 2, ///< an integer also for a boolean field
    Pair = 3,    ///< two booleans of opposite values; the row names the one that equals the field
};

/// What the dialog allows in a parameter, and the range of its slider. Equal ends: not limited.
struct OptionLimits
{
    double Low = 0.0;
    double High = 0.0;
    double SliderLow = 0.0;
    double SliderHigh = 0.0;
};

/// One option in all its vocabularies. An empty name means that the vocabulary does not have it.
struct OptionRow
{
    OptionField Field;
    std::string_view SettingsKey;
    std::string_view CommandKey;
    std::string_view SecondKey;
    std::string_view Alias;
    std::string_view Parameter;
    CommandForm Command = CommandForm::Typed;
    ParameterForm Dialog = ParameterForm::Typed;
    OptionWords Words;           ///< empty where no vocabulary uses words
    std::uint32_t OtherWord = 0; ///< value of a word on the command line that is not in `Words`
    OptionLimits Limits;
    std::string_view Help;
};

/// All rows in the order of the record's fields, which is the order in which the command tests its keys.
std::span<const OptionRow> OptionTable();

/// The first row that the command finds under a key: its names are the key, the second key and the alias.
/// nullptr for an unknown key.
const OptionRow* FindCommandRow(std::string_view key);

/// The row of a key of the settings file, or nullptr.
const OptionRow* FindSettingsRow(std::string_view key);

/// The row of a dialog parameter, or nullptr.
const OptionRow* FindParameterRow(std::string_view parameter);

/// The value of a word, or nothing.
std::optional<std::uint32_t> FindOptionWord(OptionWords words, std::string_view word);

/// The first word of a value, or nothing.
std::optional<std::string_view> WordOfValue(OptionWords words, std::uint32_t value);

} // namespace tq4x
