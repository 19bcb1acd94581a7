#pragma once

#include "animation/AnimationCurve.h"

namespace tq4x
{

/// Value of the cubic segment between two keys at a frame, in single precision. Which keys a reduction keeps
/// depends on the rounding, so the order of the operations is fixed. Two keys at one frame give the value of
/// `b`. The frame may lie outside the segment.
float EvaluateHermite(const CurveKey& a, const CurveKey& b, float frame);

} // namespace tq4x
