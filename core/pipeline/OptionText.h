#pragma once

#include "pipeline/OptionTable.h"

#include <optional>
#include <string>
#include <string_view>

namespace tq4x
{

// Values of options as the command's `Key:Value` texts and the settings file spell them.

/// Sets the row's field as the export command reads its value. Texts that are no number give 0, booleans are
/// true only for "true", unknown words give the row's value for other words.
void ReadCommandValue(const OptionRow& row, std::string_view value, ExportOptions& options);

/// The text that `ReadCommandValue` turns into the record's value. An enumeration outside its words gives the
/// empty text.
std::string CommandValue(const OptionRow& row, const ExportOptions& options);

/// Sets the row's field as the settings file spells its value. A word that the row does not have leaves the
/// field as it is.
void ReadSettingsValue(const OptionRow& row, std::string_view value, ExportOptions& options);

/// The value in the settings file; nothing for an enumeration outside its words.
std::optional<std::string> SettingsValue(const OptionRow& row, const ExportOptions& options);

} // namespace tq4x
