#pragma once

#include <filesystem>
#include <span>

#include "cli/WrittenFiles.h"
#include "preview/PreviewData.h"

namespace tq4x::preview
{

/// Reads the files of an export back, checks them and adds what they hold to the data: files, findings,
/// scenes, textures, clips, cameras and lights, author and date. `data.Folder` must be set: paths become
/// relative to it. Every model is a scene of its own, each together with all that is no model.
void CollectPreview(PreviewData& data, std::span<const cli::WrittenFiles::File> files);

} // namespace tq4x::preview
