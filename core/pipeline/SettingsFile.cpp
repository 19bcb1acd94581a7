#include "pipeline/SettingsFile.h"

#include "pipeline/Envelope.h"
#include "pipeline/FileAccess.h"
#include "pipeline/IniFolder.h"
#include "pipeline/MessageLog.h"
#include "pipeline/NumberText.h"
#include "pipeline/OptionText.h"
#include "pipeline/OutputFile.h"
#include "pipeline/Platform.h"
#include "pipeline/SettingsLines.h"

#include <array>
#include <cstdio>

namespace tq4x
{
namespace
{

using SettingsValues = std::map<std::string, std::string, std::less<>>;

constexpr std::string_view Header = "# TQ4X_ForPennonExport settings";
constexpr std::string_view GeneratorVersionKey = "GeneratorVersion";
constexpr std::string_view LastExportName = "last_export_options_for_pennon.q3es";

/// Comments and keys in the order of the file. Other programs compare these files line by line.
constexpr std::string_view Layout[] = {
    "# Output Options",
    "ExportTarget",
    "OutputFileName",
    "OutputMode",
    "OutputFolder",
    "MergeQmdl",
    "MergeQmdlPath",
    "# General Options",
    "Magnify",
    "FrameRange",
    "StartFrame",
    "EndFrame",
    "# Output File Selection",
    "OutputQmdl",
    "OutputQtex",
    "OutputQskla",
    "OutputQmata",
    "OutputQcam",
    "OutputQlgt",
    "OutputQmdla",
    "OutputQenv",
    "# Optimization Options",
    "ComressNode",
    "ComressMaterial",
    "OptimizePrimitive",
    "ConvertToModel",
    "# Quantization Options",
    "QuantizePos",
    "QuantizeNrm",
    "QuantizeTex",
    "# Model Options",
    "AdjustSkinning",
    "MeshVisibilityMode",
    "NonUniformScale",
    "MaxReservedUniformRegisters",
    "# Animation Options",
    "FramePrecision",
    "LoopAnim",
    "FrameFormat",
    "TranslateQuantizeQuality",
    "RotateQuantizeQuality",
    "ScaleQuantizeQuality",
    "# Tolerance Options",
    "ToleranceScale",
    "ToleranceRotate",
    "ToleranceTranslate",
    "ToleranceTexScale",
    "ToleranceTexRotate",
    "ToleranceTexTranslate",
    "ToleranceColor",
    "# Softimage Options",
    "SoftimageInvertVertexColorAlpha",
    "SoftimageIgnoreAmbientTexture",
};

/// Up to four numbers of a version text; missing ones are 0.
std::array<std::int32_t, 4> VersionNumbers(std::string_view text)
{
    std::array<std::int32_t, 4> numbers{};
    for (std::int32_t& number : numbers) {
        const std::size_t point = text.find('.');
        number = ParseInteger(text.substr(0, point));
        text.remove_prefix(point == std::string_view::npos ? text.size() : point + 1);
    }
    return numbers;
}

/// Programs before 0.6.1.2 wrote `ConvertToModel` with another meaning. Each number is judged alone, so that
/// 0.5.3 already counts as new; files in use rely on that.
bool IsConvertToModelTrusted()
{
    const std::array<std::int32_t, 4> version = VersionNumbers(KeptGeneratorVersion());
    return !(version[0] < 1 && version[1] < 6 && version[2] < 1 && version[3] < 2);
}

void ApplyValues(const SettingsValues& values, ExportOptions& options)
{
    if (const auto version = values.find(GeneratorVersionKey); version != values.end())
        KeptGeneratorVersion() = version->second;
    for (const OptionRow& row : OptionTable()) {
        const auto value = values.find(row.SettingsKey);
        if (value != values.end() && (row.SettingsKey != "ConvertToModel" || IsConvertToModelTrusted()))
            ReadSettingsValue(row, value->second, options);
    }
}

/// Takes up a line's value under a known key that has none yet.
bool InsertLine(SettingsValues& values, std::string_view line)
{
    const auto item = SplitKeyValue(line);
    if (!item || (item->first != GeneratorVersionKey && FindSettingsRow(item->first) == nullptr))
        return false;
    return values.emplace(item->first, item->second).second;
}

/// Calls `changed` with the values so far whenever a line has added one. False for another header.
template<typename Changed>
bool WalkSettings(std::string_view text, Changed changed)
{
    LineReader lines(text);
    if (lines.Next() != Header)
        return false;
    SettingsValues values;
    while (const std::optional<std::string_view> line = lines.Next())
        if (!line->starts_with('#') && InsertLine(values, *line))
            changed(values);
    return true;
}

std::string DateValue()
{
    const LocalTime now = CurrentPlatform().Now();
    std::array<char, 48> date;
    const int length =
        std::snprintf(date.data(), date.size(), "%04d-%02d-%02dT", now.Year, now.Month, now.Day);
    return std::string(date.data(), static_cast<std::size_t>(length)) + CurrentPlatform().TimeText(now);
}

bool ReportUnusable(const std::string& path)
{
    ReportMessage(MessageCode::InternalError, path);
    return false;
}

} // namespace

bool ReadSettingsText(std::string_view text, ExportOptions& options)
{
    // Applied behind each line, not once at the end: a `ConvertToModel` that stands before a version which
    // refuses it has been taken over by then.
    return WalkSettings(text, [&options](const SettingsValues& values) { ApplyValues(values, options); });
}

std::map<std::string, std::string, std::less<>> ReadSettingsKeys(std::string_view text)
{
    SettingsValues all;
    static_cast<void>(WalkSettings(text, [&all](const SettingsValues& values) { all = values; }));
    return all;
}

bool ReadSettingsFile(const std::string& path, ExportOptions& options)
{
    const std::optional<std::string> text = ReadFileText(path, MaxSettingsSize);
    return (text && ReadSettingsText(*text, options)) || ReportUnusable(path);
}

std::string SettingsText(const ExportOptions& options)
{
    std::string text = std::string(Header) + "\n";
    AppendKeyValue(text, "SettingsVersion", ToolVersion);
    AppendKeyValue(text, "GeneratorName", HostName);
    AppendKeyValue(text, GeneratorVersionKey, ToolVersion);
    AppendKeyValue(text, "Date", DateValue());
    for (const std::string_view item : Layout) {
        if (item.starts_with('#'))
            text.append("\n").append(item).append("\n");
        else if (const std::optional<std::string> value = SettingsValue(*FindSettingsRow(item), options))
            AppendKeyValue(text, item, *value);
    }
    return text;
}

bool WriteSettingsFile(const std::string& path)
{
    if (LiveOptions() == nullptr)
        return ReportUnusable(path);
    OutputFile file;
    if (!file.Open(path))
        return true; // a place that can't be written is the user's business and stays unsaid
    file.Write(SettingsText(*LiveOptions()));
    CommitOutput(file);
    return true;
}

std::string& KeptGeneratorVersion()
{
    static std::string version;
    return version;
}

bool SaveLastExport()
{
    const std::optional<std::string> folder = PrepareIniFolder();
    return !folder || WriteSettingsFile(*folder + std::string(LastExportName));
}

bool LoadLastExport(ExportOptions& options)
{
    const std::optional<std::string> folder = IniFolder();
    if (!folder) {
        PrintMessage("Environment variable TQ4X_FORPENNON_ROOT was not found\n"
                     "Latest export option have not been saved\n",
                     Severity::Warning);
        return false;
    }
    const std::string path = *folder + std::string(LastExportName);
    if (!PathExists(path)) {
        PrintMessage("Last export option file is not found.\n", Severity::Warning);
        return false;
    }
    return ReadSettingsFile(path, options);
}

} // namespace tq4x
