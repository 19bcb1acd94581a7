#include <algorithm>
#include <filesystem>

#include "CheckFiles.h"
#include "cli/Command.h"
#include "cli/FindingText.h"
#include "gltf/JsonValue.h"

namespace tq4x::cli
{
namespace
{

constexpr OptionSpec Specs[] = {
    {"--json", 0, "", "print JSON"},
};

struct Counts
{
    std::size_t Errors = 0;
    std::size_t Warnings = 0;
};

Counts CountFindings(const reader::CheckResult& result)
{
    const auto errors = std::ranges::count(result.Findings, reader::Severity::Error, &reader::Finding::Level);
    return {static_cast<std::size_t>(errors), result.Findings.size() - static_cast<std::size_t>(errors)};
}

std::string Plural(std::size_t count, const std::string& word)
{
    return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

std::string SummaryLine(const reader::CheckResult& result)
{
    const Counts counts = CountFindings(result);
    const std::string unreadable =
        result.UnreadableCount == 0 ? "" : ", " + std::to_string(result.UnreadableCount) + " can't be read";
    return Plural(result.FileCount, "file") + ": " + Plural(counts.Errors, "error") + ", " +
           Plural(counts.Warnings, "warning") + unreadable + ".";
}

gltf::JsonValue AsJson(const reader::CheckResult& result)
{
    const auto number = [](std::size_t count) { return gltf::JsonValue{static_cast<std::int64_t>(count)}; };
    const Counts counts = CountFindings(result);
    gltf::JsonArray findings;
    for (const reader::Finding& finding : result.Findings) {
        findings.push_back(FindingAsJson(finding));
    }
    return {gltf::JsonObject{{"files", number(result.FileCount)},
                             {"unreadable", number(result.UnreadableCount)},
                             {"errors", number(counts.Errors)},
                             {"warnings", number(counts.Warnings)},
                             {"findings", {std::move(findings)}}}};
}

void PrintText(const reader::CheckResult& result, Console& console)
{
    for (const reader::Finding& finding : result.Findings) {
        console.Result(FindingText(finding));
    }
    console.Result(SummaryLine(result));
}

/// A quiet program has no results, but it tells errors.
void TellErrors(const reader::CheckResult& result, Console& console)
{
    for (const reader::Finding& finding : result.Findings) {
        if (finding.Level == reader::Severity::Error) {
            console.Tell(Severity::Error, FindingPlace(finding), finding.Code + ": " + finding.Text);
        }
    }
}

ExitCode RunCheck(const Arguments& arguments, Console& console)
{
    const std::vector<std::filesystem::path> paths(arguments.Positionals.begin(),
                                                   arguments.Positionals.end());
    const reader::CheckResult result = reader::CheckFiles(paths);
    if (arguments.Has("--json")) {
        console.Result(gltf::FormatJson(AsJson(result)));
    } else if (console.GetVerbosity() == Verbosity::Quiet) {
        TellErrors(result, console);
    } else {
        PrintText(result, console);
    }
    if (result.UnreadableCount > 0) {
        return BadInput;
    }
    return CountFindings(result).Errors > 0 ? Failed : Done;
}

} // namespace

const Command CheckCommand = {"check",
                              "FILE|FOLDER...",
                              1,
                              AnyNumber,
                              "Checks written files against their grammar and against each other.",
                              Specs,
                              RunCheck};

} // namespace tq4x::cli
