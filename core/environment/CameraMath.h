#pragma once

#include "math/Vector.h"

#include <array>

namespace tq4x
{

/// Three doubles: a point or direction as the host gives it.
using DoubleVector = std::array<double, 3>;

/// The upward vector of a camera: the part of the way to `up` that is perpendicular to the view axis, of unit
/// length, turned about that axis by minus `roll` degrees. A camera that stands on its target, or an up
/// object on the view axis, has no such part: the result is then not a number or zero.
Vector3 ComputeUpVector(const DoubleVector& camera, const DoubleVector& target, const DoubleVector& up,
                        double roll);

/// The vertical field of view in degrees of a horizontal one, by width over height. A ratio of 0 or less
/// gives 0.
float ToVerticalFieldOfView(float horizontal, float ratio);

} // namespace tq4x
