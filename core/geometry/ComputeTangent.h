#pragma once

#include "math/Vector.h"

namespace tq4x
{

/// What a tangent is derived from at one corner of a polygon.
struct TangentCorner
{
    Vector3 Position;
    Vector2 Coordinate; ///< texture coordinate, u and v
};

/// The direction in which u rises at corner `a`, whose neighbours in the polygon are `b` (previous) and `c`
/// (next), in single precision. A unit vector, perpendicular to the normal unless that is zero.
///
/// Degenerate coordinates (no area in texture space) give some direction that is perpendicular to the normal,
/// and the X axis for a zero normal. The zero vector where nothing is left: edges without length, a normal
/// along the raw tangent, or degenerate coordinates with a normal along Y that is not of unit length.
Vector3 ComputeTangent(const TangentCorner& a, const TangentCorner& b, const TangentCorner& c,
                       const Vector3& normal);

} // namespace tq4x
