#pragma once

#include "environment/CameraSet.h"
#include "pipeline/ExportValues.h"

namespace tq4x
{

/// Turns the samples of a camera into keys: snaps the static values, settles the curves' names and
/// tolerances, tells which are to be written, raises the group flags and builds the keys of those that move.
/// `magnify` scales the tolerance of lengths, `frameSteps` samples make a frame.
void FinishCamera(Camera& camera, bool isLoop, const NodeTolerances& tolerances, float magnify,
                  int frameSteps);

/// The same for all cameras of a set, with its magnification; stores frame size and loop flag in the set.
void FinishCameras(CameraSet& set, std::int32_t frameSize, bool isLoop, const NodeTolerances& tolerances,
                   int frameSteps);

/// True if the camera has a group that moves, or a single channel that is to be written. Needs a finished
/// camera.
bool HasAnimation(const Camera& camera);

} // namespace tq4x
