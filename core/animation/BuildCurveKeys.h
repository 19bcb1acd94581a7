#pragma once

#include "animation/AnimationCurve.h"

namespace tq4x
{

// The order for every channel but those of bones: fill `Samples`; set `Name`, `IsLoop`, `IsAngle` and
// `Tolerance`; `IsConstantCheck`; `UpdateNeedsOutput`; if the curve is not constant, raise the owner's group
// flag and build the keys.

/// Sets `IsConstant`: no sample differs from the first by the tolerance or more. True for an empty list.
void IsConstantCheck(AnimationCurve& curve);

/// Sets `NeedsOutput`: the curve moves, or rests at another value than `defaultValue` (angles: modulo a
/// turn). False without samples. Needs `IsConstant`.
void UpdateNeedsOutput(AnimationCurve& curve, float defaultValue);

/// Builds `Keys` from `Samples`, which stay as they are: angles are unwrapped if `unwrap` says so and moved
/// by whole turns towards zero, then the keys are reduced. `frameSteps` samples make a frame.
void BuildCurveKeys(AnimationCurve& curve, bool unwrap, int frameSteps);

/// Builds `Keys` of a two-state channel: a key at frame 0 and one at each sample that differs from the last
/// key by the tolerance or more. Slopes are 0; only `Frame` and `Value` are meant to be read.
void BuildStepKeys(AnimationCurve& curve, int frameSteps);

} // namespace tq4x
