#pragma once

#include "geometry/VertexAttributePool.h"
#include "pipeline/ExportOptions.h"

namespace tq4x
{

/// The storage that the options ask for; `Float` for all while the authoring tool will rewrite the file,
/// which then quantises once, after the bones have moved. Values that name no mode count as `Float`.
StreamQuantization ChooseQuantization(const ExportOptions& options);

} // namespace tq4x
