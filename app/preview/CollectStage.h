#pragma once

#include <string>

#include "ReadDocument.h"
#include "preview/PreviewData.h"

namespace tq4x::preview
{

/// Adds what a file holds of clips, cameras and lights. `path` is how the page names the file.
void AddStage(const reader::Document& document, const std::string& path, PreviewData& data);

} // namespace tq4x::preview
