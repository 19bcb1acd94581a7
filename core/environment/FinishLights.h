#pragma once

#include "environment/LightSet.h"
#include "pipeline/ExportValues.h"

namespace tq4x
{

/// Turns the samples of a light into keys. `colorTolerance` is a plain difference of colours; `frameSteps`
/// samples make a frame.
void FinishLight(Light& light, bool isLoop, const NodeTolerances& tolerances, float colorTolerance,
                 int frameSteps);

/// The same for all lights of a set; stores frame size and loop flag in the set.
void FinishLights(LightSet& set, std::int32_t frameSize, bool isLoop, const NodeTolerances& tolerances,
                  float colorTolerance, int frameSteps);

/// True if the light has a group that moves, or a visibility that is to be written. Needs a finished light.
bool HasAnimation(const Light& light);

} // namespace tq4x
