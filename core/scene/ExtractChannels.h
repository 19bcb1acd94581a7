#pragma once

#include "pipeline/ExportValues.h"

namespace tq4x
{

struct Bone;

/// What the reduction of a node's samples to keys needs to know.
struct ChannelSettings
{
    NodeTolerances Tolerances;
    int FrameSteps = 1; ///< samples per frame
};

/// Turns the sampled matrices of a node into nine channels of scale, rotation and translation, and builds the
/// keys of those that move by more than their tolerance. The first matrix alone is left; `Scale`, `Rotate`
/// and `Translate` take the first values. A node without samples stays as it is.
void ExtractChannels(Bone& bone, const ChannelSettings& settings);

} // namespace tq4x
