#include "cli/FindingText.h"

#include "cli/Console.h"

namespace tq4x::cli
{
namespace
{

std::string LevelWord(const reader::Finding& finding)
{
    return finding.Level == reader::Severity::Error ? "error" : "warning";
}

} // namespace

std::string FindingPlace(const reader::Finding& finding)
{
    return finding.File + (finding.Line > 0 ? ":" + std::to_string(finding.Line) : "");
}

std::string FindingText(const reader::Finding& finding)
{
    return MakePrintable(FindingPlace(finding) + ": " + LevelWord(finding) + " " + finding.Code + ": " +
                         finding.Text);
}

gltf::JsonValue FindingAsJson(const reader::Finding& finding)
{
    return {gltf::JsonObject{{"code", {finding.Code}},
                             {"severity", {LevelWord(finding)}},
                             {"file", {finding.File}},
                             {"line", {static_cast<std::int64_t>(finding.Line)}},
                             {"text", {finding.Text}}}};
}

} // namespace tq4x::cli
