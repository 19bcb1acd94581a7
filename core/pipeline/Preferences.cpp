#include "pipeline/Preferences.h"

#include "pipeline/FileAccess.h"
#include "pipeline/IniFolder.h"
#include "pipeline/MessageLog.h"
#include "pipeline/OutputFile.h"
#include "pipeline/SettingsLines.h"
#include "pipeline/TextHelpers.h"

#include <map>

namespace tq4x
{
namespace
{

constexpr std::string_view FileName = "plugin_preference_for_pennon.txt";
constexpr std::string_view AutoSaveKey = "AutoSaveExportOptions";
constexpr std::string_view LoadDirKey = "OptionDefaultLoadDir";
constexpr std::string_view SaveDirKey = "OptionDefaultSaveDir";
constexpr std::size_t MaxFileSize = std::size_t{1} << 20;

using Values = std::map<std::string_view, std::string_view>;

/// The values of all lines but the first; the first value of a key counts.
Values ReadValues(std::string_view text)
{
    Values values;
    LineReader lines(text);
    lines.Next();
    while (const std::optional<std::string_view> line = lines.Next())
        if (const auto item = SplitKeyValue(*line); item && !line->starts_with('#'))
            values.insert(*item);
    return values;
}

void Apply(const Values& values, PluginPreferences& preferences)
{
    if (const auto value = values.find(AutoSaveKey); value != values.end())
        preferences.AutoSaveExportOptions = value->second == "true";
    if (const auto value = values.find(LoadDirKey); value != values.end())
        preferences.OptionDefaultLoadDir = value->second;
    if (const auto value = values.find(SaveDirKey); value != values.end())
        preferences.OptionDefaultSaveDir = value->second;
}

} // namespace

PluginPreferences& CurrentPreferences()
{
    static PluginPreferences preferences;
    return preferences;
}

void ReadPreferences(PluginPreferences& preferences)
{
    const std::optional<std::string> folder = IniFolder();
    const std::optional<std::string> text =
        folder ? ReadFileText(*folder + std::string(FileName), MaxFileSize) : std::nullopt;
    if (text)
        Apply(ReadValues(*text), preferences);
    else
        PrintMessage("Export Preference File is not found.\n", Severity::Warning);
}

void WritePreferences(const PluginPreferences& preferences)
{
    const std::optional<std::string> folder = PrepareIniFolder();
    OutputFile file;
    if (!folder || !OpenOutput(file, *folder + std::string(FileName)))
        return;
    std::string text;
    AppendKeyValue(text, AutoSaveKey, BoolText(preferences.AutoSaveExportOptions));
    AppendKeyValue(text, LoadDirKey, preferences.OptionDefaultLoadDir);
    AppendKeyValue(text, SaveDirKey, preferences.OptionDefaultSaveDir);
    file.Write(text);
    CommitOutput(file);
}

} // namespace tq4x
