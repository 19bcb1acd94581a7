#pragma once

#include "math/Vector.h"

#include <cmath>

namespace tq4x
{

/// Single-precision vector operations, the products of a sum in the order x, y, z.

constexpr Vector3 Add(const Vector3& a, const Vector3& b)
{
    return {a.X + b.X, a.Y + b.Y, a.Z + b.Z};
}

constexpr Vector3 Subtract(const Vector3& a, const Vector3& b)
{
    return {a.X - b.X, a.Y - b.Y, a.Z - b.Z};
}

constexpr float Dot(const Vector3& a, const Vector3& b)
{
    return a.X * b.X + a.Y * b.Y + a.Z * b.Z;
}

constexpr Vector3 Cross(const Vector3& a, const Vector3& b)
{
    return {a.Y * b.Z - a.Z * b.Y, a.Z * b.X - a.X * b.Z, a.X * b.Y - a.Y * b.X};
}

/// The vector divided by its length; as it is if the length is exactly 0.
inline Vector3 Normalize(const Vector3& vector)
{
    const float length = std::sqrt(Dot(vector, vector));
    if (length == 0.0f)
        return vector;
    return {vector.X / length, vector.Y / length, vector.Z / length};
}

} // namespace tq4x
