#include "geometry/ComputeTangent.h"

#include "geometry/VectorMath.h"
#include "math/Scalar.h"

namespace tq4x
{
namespace
{

bool IsClose(const Vector3& a, const Vector3& b)
{
    const Vector3 difference = Subtract(a, b);
    return IsNegligible(difference.X) && IsNegligible(difference.Y) && IsNegligible(difference.Z);
}

/// An axis that is not parallel to the normal where it matters most: Y, unless the normal is Y itself.
Vector3 HelperAxis(const Vector3& normal)
{
    if (IsClose(normal, {0.0f, 1.0f, 0.0f}) || IsClose(normal, {0.0f, -1.0f, 0.0f}))
        return {0.0f, 0.0f, -1.0f};
    return {0.0f, 1.0f, 0.0f};
}

Vector3 MakePerpendicular(const Vector3& vector, const Vector3& normal)
{
    return Cross(Cross(normal, vector), normal);
}

} // namespace

Vector3 ComputeTangent(const TangentCorner& a, const TangentCorner& b, const TangentCorner& c,
                       const Vector3& normal)
{
    const Vector3 e1 = Subtract(b.Position, a.Position);
    const Vector3 e2 = Subtract(c.Position, a.Position);
    const float s1 = b.Coordinate.X - a.Coordinate.X;
    const float s2 = c.Coordinate.X - a.Coordinate.X;
    const float t1 = b.Coordinate.Y - a.Coordinate.Y;
    const float t2 = c.Coordinate.Y - a.Coordinate.Y;
    const float r = t2 * s1 - s2 * t1;
    const bool hasNormal = normal != Vector3{};
    if (r == 0.0f && !hasNormal)
        return {1.0f, 0.0f, 0.0f};
    Vector3 tangent = Cross(HelperAxis(normal), normal);
    if (r != 0.0f)
        tangent = {(e1.X * t2 - e2.X * t1) / r, (e1.Y * t2 - e2.Y * t1) / r, (e1.Z * t2 - e2.Z * t1) / r};
    if (hasNormal)
        tangent = MakePerpendicular(tangent, normal);
    return Normalize(tangent);
}

} // namespace tq4x
