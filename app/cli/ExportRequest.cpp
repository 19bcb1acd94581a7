#include "cli/ExportRequest.h"

#include <charconv>

#include "cli/DeviceName.h"
#include "cli/ReadFrameRate.h"
#include "cli/ReadSettings.h"
#include "pipeline/OptionProblems.h"
#include "pipeline/OptionTable.h"
#include "pipeline/OptionText.h"
#include "pipeline/PathText.h"

namespace tq4x::cli
{
namespace
{

constexpr OptionSpec Specs[] = {
    {"--output", 'o', "DIR", "folder of the files; default: the current one"},
    {"--name", 'n', "NAME", "name of the files without extension; default: that of the scene"},
    {"--settings", 's', "FILE.q3es", "take the settings of this file"},
    {"--set", 0, "KEY:VALUE", "set an option of the plug-in's export command", true},
    {"--frames", 0, "all|playback|FIRST-LAST", "frames to export, counted from 1; default: all"},
    {"--clip", 0, "NAME", "animation to export; default: the first"},
    {"--select", 0, "NODE", "export this object and what is below it", true},
    {"--fps", 0, "N", "frames per second of the scene; default: 30"},
    {"--fit-textures", 0, "", "bring pictures to the nearest size that a texture can have"},
    {"--overwrite", 0, "", "overwrite existing files without asking"},
    {"--asset-root", 0, "DIR", "allow files of the scene anywhere below this folder"},
    {"--author", 0, "NAME", "author that the files name; default: the user"},
    {"--report", 0, "FILE.json", "write messages and files as JSON"},
    {"--preview", 0, "FILE.html", "write a page that shows the result: 3D view, tables, messages"},
    {"--depfile", 0, "FILE", "write what the files depend on, for build tools"},
    {"--plugin", 0, "FILE", "load this plug-in; default: $TQ4X_PLUGIN, else the one beside the program"},
};

/// Reads an integer that fills the whole text.
std::optional<int> ReadInteger(std::string_view text)
{
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

/// The texts that select frames; nothing for a word that is none. Bounds may be negative: "-5--1".
std::optional<std::vector<std::string>> FrameTexts(const std::string& frames)
{
    if (frames == "all") {
        return std::vector<std::string>{"SelectAnimationFrame:All"};
    }
    if (frames == "playback") {
        return std::vector<std::string>{"SelectAnimationFrame:Playback"};
    }
    const std::size_t dash = frames.find('-', 1);
    const auto first = dash == std::string::npos ? std::nullopt : ReadInteger(frames.substr(0, dash));
    const auto last = first ? ReadInteger(frames.substr(dash + 1)) : std::nullopt;
    if (!last) {
        return std::nullopt;
    }
    return std::vector<std::string>{"SelectAnimationFrame:Range",
                                    "AnimationStartFrame:" + std::to_string(*first),
                                    "AnimationEndFrame:" + std::to_string(*last)};
}

/// A record of options as texts for the export command, one for each key that it has.
std::vector<std::string> TextsOf(const ExportOptions& options)
{
    std::vector<std::string> texts;
    for (const OptionRow& row : OptionTable()) {
        const std::string key(row.CommandKey);
        // Name and folder are arguments of their own, and any text at all would switch overwriting on.
        if (!key.empty() && row.Command != CommandForm::Switch && key != "OutputFileName" &&
            key != "OutputFolder") {
            texts.push_back(key + ":" + CommandValue(row, options));
        }
    }
    return texts;
}

class RequestReader
{
public:
    RequestReader(const Arguments& arguments, bool hasTool) : m_arguments(arguments), m_hasTool(hasTool) {}

    ParsedRequest Read()
    {
        m_request.Scene = m_arguments.Positionals[0];
        m_request.Selected = m_arguments.Values("--select");
        m_request.ReportFile = m_arguments.Value("--report");
        m_request.PreviewFile = m_arguments.Value("--preview");
        m_request.DependencyFile = m_arguments.Value("--depfile");
        ReadOpening();
        ReadOverrides();
        ReadSettings();
        m_request.Name = m_arguments.Value("--name").value_or(
            FirstOf(m_settings.OutputFileName, m_request.Scene.stem().string()));
        if (IsDeviceName(m_request.Name)) {
            Refuse("The output name \"" + m_request.Name +
                   "\" belongs to a device on Windows; --name gives another.");
        }
        // Made native here, so that the plug-in and whoever looks for its files mean the same folder.
        m_request.Folder =
            NativePath(m_arguments.Value("--output").value_or(FirstOf(m_settings.OutputFolder, ".")));
        m_parsed.Content = std::move(m_request);
        return std::move(m_parsed);
    }

private:
    static std::string FirstOf(const std::string& wanted, const std::string& otherwise)
    {
        return wanted.empty() ? otherwise : wanted;
    }

    void Refuse(const std::string& text)
    {
        if (m_parsed.UsageError.empty()) {
            m_parsed.UsageError = text;
        }
    }

    void ReadOpening()
    {
        m_request.Opening.AssetRoot = m_arguments.Value("--asset-root").value_or("");
        m_request.Opening.Clip = m_arguments.Value("--clip");
        m_request.Opening.FitTextures = m_arguments.Has("--fit-textures");
        if (const auto text = m_arguments.Value("--fps")) {
            const auto rate = ReadFrameRate(*text);
            if (!rate) {
                Refuse(FrameRateProblem(*text));
            }
            m_request.Opening.FramesPerSecond = rate.value_or(DefaultFrameRate);
        }
    }

    /// What goes on top of settings: other options first, --set last.
    void ReadOverrides()
    {
        if (const auto frames = m_arguments.Value("--frames")) {
            const auto texts = FrameTexts(*frames);
            if (!texts) {
                Refuse("The frames must be all, playback or FIRST-LAST, not \"" + *frames + "\".");
            }
            m_overrides = texts.value_or(std::vector<std::string>());
        }
        if (m_arguments.Has("--overwrite")) {
            m_overrides.push_back("AlwaysOverwrite:true");
        }
        if (!m_request.Selected.empty()) {
            m_overrides.push_back("ExportTarget:Selection");
        }
        for (const std::string& text : m_arguments.Values("--set")) {
            if (const auto problem = FindArgumentProblem(text)) {
                Refuse(*problem);
            }
            m_overrides.push_back(text);
        }
    }

    /// The plug-in reads a settings file itself. Where something goes on top, all of the file becomes texts
    /// of the export command. A file that is silent about the tool does not ask for one that is missing.
    void ReadSettings()
    {
        const auto file = m_arguments.Value("--settings");
        if (!file) {
            if (!m_hasTool) {
                m_request.KeyValues.push_back("OptimizePrimitive:false");
            }
            AddOverrides();
            return;
        }
        m_request.Inputs.emplace_back(*file);
        const SettingsContent content = cli::ReadSettings(*file);
        m_parsed.InputError = content.Error;
        m_settings = content.Options;
        const bool isToolLeftOut = !m_hasTool && !content.Given.contains("OptimizePrimitive");
        if (isToolLeftOut) {
            m_settings.OptimizePrimitive = false;
        }
        if (m_overrides.empty() && !isToolLeftOut) {
            m_request.SettingsFile = file;
            return;
        }
        m_request.KeyValues = TextsOf(m_settings);
        AddOverrides();
    }

    void AddOverrides()
    {
        m_request.KeyValues.insert(m_request.KeyValues.end(), m_overrides.begin(), m_overrides.end());
    }

    const Arguments& m_arguments;
    bool m_hasTool;
    ExportOptions m_settings;
    std::vector<std::string> m_overrides;
    ExportRequest m_request;
    ParsedRequest m_parsed;
};

} // namespace

std::span<const OptionSpec> ExportOptionSpecs()
{
    return Specs;
}

ParsedRequest ReadExportRequest(const Arguments& arguments, bool hasTool)
{
    return RequestReader(arguments, hasTool).Read();
}

} // namespace tq4x::cli
