#pragma once

#include "pipeline/ExportOptions.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace tq4x
{

// The text file that keeps a whole record of options (extension .q3es): a fixed header, comment lines that
// begin with "#", and `Key="Value"` lines.

/// Larger files are no settings.
inline constexpr std::size_t MaxSettingsSize = std::size_t{16} << 20;

/// Reads a file into the record. Fields that the file does not hold stay as they are, unknown keys and words
/// are passed over, of a key that stands twice the first value counts, and a line with a second "=" is
/// dropped. False, with code 23 and the path, if the file can't be read, is larger than `MaxSettingsSize`, or
/// has another header; the record is then untouched.
[[nodiscard]] bool ReadSettingsFile(const std::string& path, ExportOptions& options);

/// The same from text; false only for another header. Reports nothing.
[[nodiscard]] bool ReadSettingsText(std::string_view text, ExportOptions& options);

/// The known keys that a settings text gives, with their values; empty for another header.
std::map<std::string, std::string, std::less<>> ReadSettingsKeys(std::string_view text);

/// The whole text for a record, stamped with the present moment. An enumeration outside its words has no
/// line.
std::string SettingsText(const ExportOptions& options);

/// Writes the live record. A file that can't be opened is passed over in silence and counts as written.
/// False, with code 23 and the path, only if there is no live record.
[[nodiscard]] bool WriteSettingsFile(const std::string& path);

/// Version of the program that wrote the settings read last; files that tell none are judged by it. Empty at
/// first.
std::string& KeptGeneratorVersion();

/// Writes the live record as the settings of the last export into the tool's folder. Warns if the tool's root
/// is not known. False only as `WriteSettingsFile`.
[[nodiscard]] bool SaveLastExport();

/// Reads the settings of the last export. False, with a warning where the tool's root or the file is missing;
/// the record is then untouched.
[[nodiscard]] bool LoadLastExport(ExportOptions& options);

} // namespace tq4x
