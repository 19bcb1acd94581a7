#include "pipeline/ExportChecks.h"
#include "pipeline/ExportValues.h"
#include "pipeline/OptionProblems.h"
#include "pipeline/OptionText.h"
#include "pipeline/Platform.h"
#include "pipeline/SettingsFile.h"
#include "pipeline/SettingsLines.h"
#include "pipeline/TextHelpers.h"
#include "pipeline/ToolScripts.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace tq4x;

namespace
{

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

/// A record that came from a settings text is written and read back without change.
void CheckSettings(std::string_view text)
{
    ExportOptions once, twice;
    if (!ReadSettingsText(text, once))
        return;
    Require(ReadSettingsText(text, twice));
    const std::string written = SettingsText(once);
    Require(SettingsText(twice) == written);
    ExportOptions readBack;
    Require(ReadSettingsText(written, readBack));
    Require(SettingsText(readBack) == written);
}

/// Lines as arguments of the export command. A text without a problem has a known key; the search for the
/// nearest key is slow, so only the first line is judged.
void CheckArguments(std::string_view text)
{
    ExportArguments arguments;
    LineReader lines(text);
    while (const std::optional<std::string_view> line = lines.Next()) {
        arguments.Options.emplace_back(*line);
        if (arguments.Options.size() == 1 && !FindArgumentProblem(*line))
            Require(FindCommandRow(line->substr(0, line->find(':'))) != nullptr ||
                    line->starts_with("BakeAllAnim"));
    }
    ExportOptions options;
    options.LoadFromArguments(arguments);
    ExportValues values;
    SetSamplingValues(values, options);
    Require(values.FrameSteps >= 1 && values.FrameSteps <= 10);
    for (const OptionRow& row : OptionTable())
        static_cast<void>(CommandValue(row, options));
    static_cast<void>(OptimizeScript(MakeOptimizeJob(options), OutputBase(options), options.OutputFileName));
}

/// A legal name stays as it is when it is made legal again.
void CheckNames(std::string_view text)
{
    const std::string legal = LegalName(text);
    Require(LegalName(legal) == legal);
    Require(ToUtf8(legal) == legal);
    static_cast<void>(ToUtf8(text));
    static_cast<void>(ScriptPath(text));
    static_cast<void>(IsFolderLegal(text));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    CurrentPlatform().Now = [] { return LocalTime{2013, 4, 9, 8, 7, 6}; };
    CheckSettings(text);
    CheckArguments(text);
    for (const unsigned codePage : {CodePageShiftJis, CodePageUtf8}) {
        SetSystemCodePage(codePage);
        CheckNames(text);
    }
    return 0;
}
