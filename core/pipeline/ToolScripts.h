#pragma once

#include "pipeline/OptimizeJob.h"

#include <string>
#include <string_view>
#include <vector>

namespace tq4x
{

// The texts of the `Startup.py` scripts that the authoring tool runs. Paths and names in them are UTF-8 with
// "/" between folders, and stand between double quotes as they are: `IsScriptSafe` tells which may.

/// A path as it stands in a script.
std::string ScriptPath(std::string_view path);

/// True if the text can't break out of its quotes, in a script or on a command line: no double quote, no
/// backquote, no dollar sign, no control character. Judged by bytes.
bool IsScriptSafe(std::string_view text);

/// The script that optimises the written files, and then merges the model with another.
///
/// `base` is the output path without an extension, `documentName` the output name.
std::string OptimizeScript(const OptimizeJob& job, std::string_view base, std::string_view documentName);

/// A file that the viewer opens, and the name of its document there.
struct ViewerFile
{
    std::string Path;
    std::string Document;
};

/// The script that makes the viewer forget the former documents of these names, each once, and load the
/// files.
std::string ViewerScript(const std::vector<ViewerFile>& files);

} // namespace tq4x
