#include "environment/CameraMath.h"

#include "math/Scalar.h"
#include "math/Trigonometry.h"

#include <cmath>
#include <cstddef>

namespace tq4x
{
namespace
{

double Dot(const DoubleVector& a, const DoubleVector& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

DoubleVector Subtract(const DoubleVector& a, const DoubleVector& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

DoubleVector Scaled(const DoubleVector& v, double factor)
{
    return {v[0] * factor, v[1] * factor, v[2] * factor};
}

/// A vector without length stays as it is.
DoubleVector Normalized(const DoubleVector& v)
{
    const double length = std::sqrt(Dot(v, v));
    return length > 0.0 ? Scaled(v, 1.0 / length) : v;
}

/// The row vector times the matrix of a turn about an axis of unit length, in radians.
DoubleVector Turned(const DoubleVector& v, const DoubleVector& axis, double angle)
{
    const double sine = Sine(angle);
    const double cosine = Cosine(angle);
    const double along = Dot(axis, v) * (1.0 - cosine);
    const DoubleVector cross = {axis[1] * v[2] - axis[2] * v[1], axis[2] * v[0] - axis[0] * v[2],
                                axis[0] * v[1] - axis[1] * v[0]};
    DoubleVector turned{};
    for (std::size_t i = 0; i < 3; ++i)
        turned[i] = v[i] * cosine + cross[i] * sine + axis[i] * along;
    return turned;
}

/// Right to the last bit of single precision on every system: their own functions of that precision differ.
float Tangent(float radians)
{
    return static_cast<float>(std::tan(static_cast<double>(radians)));
}

float ArcTangent(float tangent)
{
    return static_cast<float>(std::atan(static_cast<double>(tangent)));
}

} // namespace

Vector3 ComputeUpVector(const DoubleVector& camera, const DoubleVector& target, const DoubleVector& up,
                        double roll)
{
    const DoubleVector axis = Subtract(target, camera);
    const double share = Dot(Subtract(up, camera), axis) / Dot(axis, axis);
    const DoubleVector foot = {camera[0] + axis[0] * share, camera[1] + axis[1] * share,
                               camera[2] + axis[2] * share};
    const DoubleVector upward = Normalized(Subtract(up, foot));
    const DoubleVector turned = Turned(upward, Normalized(axis), -RadiansPerDegree * roll);
    return {static_cast<float>(turned[0]), static_cast<float>(turned[1]), static_cast<float>(turned[2])};
}

float ToVerticalFieldOfView(float horizontal, float ratio)
{
    if (ratio <= 0.0f)
        return 0.0f;
    const float half = Tangent(RadiansPerDegreeSingle * horizontal * 0.5f) / ratio;
    return DegreesPerRadianSingle * ArcTangent(half) * 2.0f;
}

} // namespace tq4x
