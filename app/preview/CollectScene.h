#pragma once

#include "preview/PreviewData.h"

namespace tq4x::preview
{

/// What the tables tell of a model: its meshes, materials and bones.
[[nodiscard]] PreviewScene DescribeModel(const reader::Model& model);

} // namespace tq4x::preview
