#include <set>

#include "cli/Command.h"
#include "cli/ReadSettings.h"
#include "cli/ReplaceFile.h"
#include "pipeline/OptionProblems.h"
#include "pipeline/OptionTable.h"
#include "pipeline/OptionText.h"
#include "pipeline/SettingsFile.h"

namespace tq4x::cli
{
namespace
{

constexpr OptionSpec Specs[] = {
    {"--set", 0, "KEY:VALUE", "set an option of the plug-in's export command", true},
    {"--write", 'w', "FILE.q3es", "write the settings to this file"},
};

/// Settings, and which of them were given by whom.
struct Settings
{
    ExportOptions Options;
    std::set<const OptionRow*> FromFile;
    std::set<const OptionRow*> FromFlags;
};

ExitCode Fail(Console& console, ExitCode code, const std::string& text)
{
    console.Error(text);
    return code;
}

/// Whether what a file says of an option is what was taken over: a word that stands for nothing is passed
/// over, and so is what an old file says of options that meant something else then.
bool IsTakenOver(const OptionRow& row, const std::string& text, const ExportOptions& options)
{
    ExportOptions again = options;
    ReadSettingsValue(row, text, again);
    const bool isKnown = row.Words.empty() || FindOptionWord(row.Words, text);
    return isKnown && SettingsValue(row, again) == SettingsValue(row, options);
}

ExitCode ReadFileInto(const std::string& path, Settings& settings, Console& console)
{
    SettingsContent content = ReadSettings(path);
    if (!content.Error.empty()) {
        return Fail(console, BadInput, content.Error);
    }
    settings.Options = std::move(content.Options);
    for (const auto& [key, text] : content.Given) {
        const OptionRow* const row = FindSettingsRow(key);
        if (row != nullptr && IsTakenOver(*row, text, settings.Options)) {
            settings.FromFile.insert(row);
        }
    }
    return Done;
}

ExitCode ApplyFlags(const std::vector<std::string>& texts, Settings& settings, Console& console)
{
    for (const std::string& text : texts) {
        if (const auto problem = FindArgumentProblem(text)) {
            return Fail(console, WrongUsage, *problem);
        }
        settings.FromFlags.insert(FindCommandRow(text.substr(0, text.find(':'))));
    }
    ExportOptions& options = settings.Options;
    options.LoadFromArguments({options.OutputFileName, options.OutputFolder, texts});
    return Done;
}

const char* SourceOf(const OptionRow& row, const Settings& settings)
{
    if (settings.FromFlags.contains(&row)) {
        return "flag";
    }
    return settings.FromFile.contains(&row) ? "file" : "default";
}

/// Every option as the settings file writes it, and where its value comes from.
void Print(const Settings& settings, Console& console)
{
    constexpr std::size_t Column = 48;
    for (const OptionRow& row : OptionTable()) {
        const auto value = SettingsValue(row, settings.Options);
        if (row.SettingsKey.empty() || !value) {
            continue; // not kept in files
        }
        std::string line = MakePrintable(std::string(row.SettingsKey) + "=\"" + *value + "\"");
        line.resize(std::max(Column, line.size() + 1), ' ');
        console.Result(line + SourceOf(row, settings));
    }
}

/// Files are read by lines that part at every "=".
void WarnAboutLostLines(const ExportOptions& options, Console& console)
{
    for (const OptionRow& row : OptionTable()) {
        const auto value = SettingsValue(row, options);
        if (!row.SettingsKey.empty() && value && value->find('=') != std::string::npos) {
            console.Tell(Severity::Warning, std::string(row.SettingsKey),
                         "The value holds a \"=\"; its line is passed over when the file is read.");
        }
    }
}

ExitCode RunSettings(const Arguments& arguments, Console& console)
{
    Settings settings;
    ExitCode code = Done;
    if (!arguments.Positionals.empty()) {
        code = ReadFileInto(arguments.Positionals[0], settings, console);
    }
    code = code == Done ? ApplyFlags(arguments.Values("--set"), settings, console) : code;
    if (code != Done) {
        return code;
    }
    const auto target = arguments.Value("--write");
    if (target && !ReplaceFile(*target, SettingsText(settings.Options))) {
        return Fail(console, BadOutput, "The file " + *target + " can't be written.");
    }
    if (target) {
        WarnAboutLostLines(settings.Options, console);
    }
    Print(settings, console);
    return Done;
}

} // namespace

const Command SettingsCommand = {
    "settings", "[FILE.q3es]", 0, 1, "Tells the values of settings and where each comes from.",
    Specs,      RunSettings};

} // namespace tq4x::cli
