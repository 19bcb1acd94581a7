#include "pipeline/IniFolder.h"

#include "pipeline/MessageLog.h"
#include "pipeline/Platform.h"
#include "pipeline/TextHelpers.h"

#include <string_view>

namespace tq4x
{
namespace
{

constexpr std::string_view FoldersBelowRoot = "\\tools\\DccPlugin\\softimage\\ini\\";

/// Drops what would be an empty piece between two separators. A path that begins with two keeps them: it
/// names a computer.
std::string JoinPieces(std::string_view path)
{
    std::string joined;
    bool isBehindSeparator = false;
    for (std::size_t i = 0, length = 0; i < path.size(); i += length) {
        length = CharacterLength(path, i);
        const bool isSeparator = path[i] == '\\';
        if (!isSeparator || !isBehindSeparator || i == 1)
            joined.append(path.substr(i, length));
        isBehindSeparator = isSeparator;
    }
    return joined;
}

} // namespace

std::optional<std::string> IniFolder()
{
    const std::optional<std::string> root = ToolRoot();
    if (!root)
        return std::nullopt;
    return JoinPieces(*root + std::string(FoldersBelowRoot));
}

std::optional<std::string> PrepareIniFolder()
{
    const std::optional<std::string> folder = IniFolder();
    if (!folder) {
        PrintMessage("Environment variable TQ4X_FORPENNON_ROOT is not found.\n"
                     "Latest export option have not been saved.\n",
                     Severity::Warning);
        return std::nullopt;
    }
    static_cast<void>(EnsureFolder(*folder)); // tells by itself; the files in it then can't be opened
    return folder;
}

} // namespace tq4x
