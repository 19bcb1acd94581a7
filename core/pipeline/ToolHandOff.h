#pragma once

#include "pipeline/ExportOptions.h"
#include "pipeline/ToolScripts.h"

#include <set>
#include <string>
#include <vector>

namespace tq4x
{

/// Has the authoring tool optimise and merge the written files, and waits for it. True also if nothing was
/// asked for, or if the tool failed, which is a warning. False, with a message, if the tool is not installed
/// (also where nothing was asked for) or its script can't be written.
[[nodiscard]] bool RunOptimization(const ExportOptions& options);

/// The files that the viewer loads, in order. `textureNames` are names of texture files without extension.
std::vector<ViewerFile> ListViewerFiles(const ExportOptions& options,
                                        const std::set<std::string>& textureNames);

/// Has the authoring tool show the written files, and waits for it. False, with a message, if the tool is not
/// installed, its script can't be written or it failed.
bool ShowInViewer(const ExportOptions& options, const std::set<std::string>& textureNames);

} // namespace tq4x
