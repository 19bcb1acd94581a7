// What needs the reader of written files, in a build that has none: the commands are there and say so.

#include <algorithm>
#include <array>
#include <filesystem>

#include "cli/Command.h"
#include "cli/DescribeWritten.h"

namespace tq4x::cli
{
namespace
{

constexpr const char* NoReader = "This build of tq4x can't read written files.";

constexpr std::array<std::string_view, 8> Extensions = {".qmdl", ".qtex", ".qskla", ".qmata",
                                                        ".qcam", ".qlgt", ".qmdla", ".qenv"};

constexpr OptionSpec CheckOptions[] = {
    {"--json", 0, "", "print JSON"},
};

constexpr OptionSpec ToGltfOptions[] = {
    {"--output", 'o', "OUT.glb", "file to write"},
    {"--fps", 0, "N", "frames per second; default: 30"},
};

ExitCode RefuseToRead(const Arguments&, Console& console)
{
    console.Error(NoReader);
    return WrongUsage;
}

} // namespace

bool IsWrittenKind(const std::string& file)
{
    std::string extension = std::filesystem::path(file).extension().string();
    std::ranges::transform(extension, extension.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return std::ranges::find(Extensions, extension) != Extensions.end();
}

FileInfo DescribeWrittenFile(const std::string&)
{
    return {"", {}, NoReader};
}

const Command CheckCommand = {
    "check",      "FILE|FOLDER...", 1, AnyNumber, "Checks written files (not in this build).",
    CheckOptions, RefuseToRead};

const Command ToGltfCommand = {
    "to-gltf",     "FILE...",   1, AnyNumber, "Turns written files back into glTF (not in this build).",
    ToGltfOptions, RefuseToRead};

} // namespace tq4x::cli
