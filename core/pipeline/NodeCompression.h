#pragma once

#include "pipeline/ExportOptions.h"

#include <cstdint>
#include <string_view>

namespace tq4x
{

/// True if the authoring tool is to rewrite the model file: node compression, material compression, primitive
/// optimisation or flattening to a model was asked for.
bool IsToolPostProcessingRequested(const ExportOptions& options);

/// The tool's keyword for a value of `CompressNode`; empty for 0 and for values that the tool has no keyword
/// for.
std::string_view NodeCompressionKeyword(std::uint32_t compressNode);

} // namespace tq4x
