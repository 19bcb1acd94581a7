#pragma once

#include "pipeline/OptionTable.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tq4x
{

// The options as parameters of the export dialog. A parameter holds a boolean, an integer, a float or a text.

using DialogValue = std::variant<bool, std::int32_t, float, std::string>;

/// A parameter as the dialog defines it.
struct DialogParameter
{
    std::string_view Name;
    DialogValue Default;
    OptionLimits Limits; ///< numbers only
};

/// All parameters in the order in which the dialog adds them.
std::vector<DialogParameter> DialogParameters();

/// The value that loading a record puts into a parameter. The three texture tolerances all show that of
/// scale. A name that is none of the dialog's gives false.
DialogValue DialogValueOf(const ExportOptions& options, std::string_view parameter);

/// The `Key:Value` texts of the export command for the values that `valueOf` reads from the dialog: one for
/// each option that the dialog holds, in the order of the option table, then "BakeAllAnim". Name and folder
/// of the output are arguments of their own and not among them.
std::vector<std::string> BuildDialogArguments(const std::function<DialogValue(std::string_view)>& valueOf);

} // namespace tq4x
