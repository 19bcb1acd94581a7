#include "cli/Command.h"
#include "cli/DescribeWritten.h"
#include "cli/SceneInfo.h"
#include "cli/Terminal.h"
#include "gltf/OpenDocument.h"
#include "gltf/SceneError.h"

namespace tq4x::cli
{
namespace
{

constexpr OptionSpec Specs[] = {
    {"--json", 0, "", "print JSON"},
    {"--asset-root", 0, "DIR", "allow files of the scenes anywhere below this folder"},
};

FileInfo DescribeFile(const std::string& file, const gltf::OpenOptions& options)
{
    if (IsWrittenKind(file)) {
        return DescribeWrittenFile(file);
    }
    const gltf::OpenedDocument opened = gltf::OpenDocument(file, options);
    if (!opened.Content) {
        return {"", {}, opened.Error};
    }
    try {
        const SceneInfo info = DescribeScene(*opened.Content);
        return {FormatInfo(info), InfoAsJson(info), ""};
    } catch (const gltf::SceneError& error) {
        return {"", {}, error.Place + ": " + error.Text};
    }
}

ExitCode RunInfo(const Arguments& arguments, Console& console)
{
    const gltf::OpenOptions options{arguments.Value("--asset-root").value_or("")};
    gltf::JsonObject all;
    ExitCode code = Done;
    for (const std::string& file : arguments.Positionals) {
        CheckInterrupt();
        FileInfo info = DescribeFile(file, options);
        if (!info.Error.empty()) {
            console.Tell(Severity::Error, file, info.Error);
            code = BadInput;
        } else if (arguments.Has("--json")) {
            all.push_back({file, std::move(info.Json)});
        } else {
            console.Result(file);
            console.Result(info.Text);
        }
    }
    if (arguments.Has("--json")) {
        console.Result(gltf::FormatJson({std::move(all)}));
    }
    return code;
}

} // namespace

const Command InfoCommand = {"info", "FILE...", 1, AnyNumber, "Tells what is in scenes and in written files.",
                             Specs,  RunInfo};

} // namespace tq4x::cli
