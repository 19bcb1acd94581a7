#include <filesystem>

#include "cli/Command.h"
#include "cli/FindingText.h"
#include "cli/ReadFrameRate.h"
#include "cli/ReplaceFile.h"
#include "cli/Terminal.h"
#include "glb/ConvertToGlb.h"

namespace tq4x::cli
{
namespace
{

constexpr OptionSpec Specs[] = {
    {"--output", 'o', "OUT.glb", "file to write"},
    {"--fps", 0, "N", "frames per second; default: 30"},
};

Severity SeverityOf(reader::Severity severity)
{
    return severity == reader::Severity::Error ? Severity::Error : Severity::Warning;
}

ExitCode Fail(Console& console, ExitCode code, const std::string& text)
{
    console.Error(text);
    return code;
}

/// Reads and converts; tells what is wrong.
ExitCode Convert(const Arguments& arguments, const reader::GlbOptions& options, std::string& glb,
                 Console& console)
{
    const std::vector<std::filesystem::path> paths(arguments.Positionals.begin(),
                                                   arguments.Positionals.end());
    const reader::ExportedFiles files = reader::ReadExport(paths);
    for (const reader::Finding& finding : files.Findings) {
        console.Tell(SeverityOf(finding.Level), FindingPlace(finding), finding.Code + ": " + finding.Text);
    }
    if (files.HasErrors) {
        return BadInput;
    }
    CheckInterrupt();
    reader::GlbResult result = reader::ConvertToGlb(files, options);
    for (const std::string& warning : result.Warnings) {
        console.Tell(Severity::Warning, {}, warning);
    }
    if (!result.Error.empty()) {
        return Fail(console, BadInput, result.Error);
    }
    glb = std::move(result.Glb);
    return Done;
}

ExitCode RunToGltf(const Arguments& arguments, Console& console)
{
    const auto target = arguments.Value("--output");
    if (!target) {
        return Fail(console, WrongUsage, "The option --output must name the file to write.");
    }
    reader::GlbOptions options;
    if (const auto text = arguments.Value("--fps")) {
        const auto rate = ReadFrameRate(*text);
        if (!rate) {
            return Fail(console, WrongUsage, FrameRateProblem(*text));
        }
        options.FramesPerSecond = *rate;
    }
    std::string glb;
    if (const ExitCode code = Convert(arguments, options, glb, console); code != Done) {
        return code;
    }
    if (!ReplaceFile(*target, glb)) {
        return Fail(console, BadOutput, "The file " + *target + " can't be written.");
    }
    console.Result(*target + "  " + std::to_string(glb.size()) + " bytes");
    return Done;
}

} // namespace

const Command ToGltfCommand = {"to-gltf", "FILE...", 1, AnyNumber, "Turns written files back into glTF.",
                               Specs,     RunToGltf};

} // namespace tq4x::cli
