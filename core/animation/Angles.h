#pragma once

#include <span>

namespace tq4x
{

/// True if two angles in degrees differ by less than `tolerance`, as they stand or with either or both moved
/// into the first turn. A negative angle gains one turn more than it needs: -360 becomes 360.
bool AnglesEqual(float first, float second, float tolerance);

/// Moves each sample by whole turns to the neighbourhood of the one before it, so that a channel doesn't jump
/// where its source wrapped: 170, 179, -179, -170 becomes 170, 179, 181, 190. True if a sample changed.
/// Differences that are not finite, or that single precision can't lessen by a turn, leave a sample as it is.
bool UnwrapAngles(std::span<float> samples);

/// Moves all samples by the same whole turns so that the middle of their range comes near zero; ranges whose
/// middle lies inside one turn of zero stay. True if they moved.
bool RecenterAngles(std::span<float> samples);

/// Angle in degrees with whole turns taken off if it lies outside -360 to 360; exactly 360 stays.
float DropWholeTurns(float degrees);

} // namespace tq4x
