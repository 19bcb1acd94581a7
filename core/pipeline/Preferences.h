#pragma once

#include <string>

namespace tq4x
{

/// What the plug-in remembers between sessions, apart from any export.
struct PluginPreferences
{
    bool AutoSaveExportOptions = true; ///< the dialog's settings are kept in the scene
    std::string OptionDefaultLoadDir;  ///< where the chooser for settings files opens
    std::string OptionDefaultSaveDir;

    bool operator==(const PluginPreferences&) const = default;
};

/// The process-wide record.
PluginPreferences& CurrentPreferences();

/// Reads the preference file of the tool's folder. A missing file, or an unknown root, is told by a warning
/// and leaves the record. The first line is never read, so `AutoSaveExportOptions` does not come back from a
/// file that `WritePreferences` wrote: sessions begin with it as it was.
void ReadPreferences(PluginPreferences& preferences);

/// Writes the preference file. Warns where the root is not known; reports code 2 with the path if the file
/// can't be opened.
void WritePreferences(const PluginPreferences& preferences);

} // namespace tq4x
