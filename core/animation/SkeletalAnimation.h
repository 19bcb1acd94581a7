#pragma once

#include "animation/AnimationDocument.h"
#include "pipeline/ExportValues.h"

#include <cstdint>

namespace tq4x
{

struct SkeletalModelWriter;

/// What a skeletal animation file says beside the bones' curves.
struct SkeletalAnimationSettings
{
    AnimationRange Range;
    int FrameSteps = 1; ///< samples per frame
    NodeTolerances Tolerances;
    bool FrameFormat = false; ///< handed to the tool, like the three qualities
    std::int32_t ScaleQuantizeQuality = 9;
    std::int32_t RotateQuantizeQuality = 9;
    std::int32_t TranslateQuantizeQuality = 9;
};

/// Writes the content of a skeletal animation file: `Animations`, or nothing if no bone is animated. Needs a
/// model after `PrepareForWriting`. The bones' translation keys are multiplied by `Magnify` in place, so the
/// content can be written once.
void WriteSkeletalAnimation(SkeletalModelWriter& content, XmlWriter& stream,
                            const SkeletalAnimationSettings& settings);

} // namespace tq4x
