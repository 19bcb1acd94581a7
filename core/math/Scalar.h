#pragma once

namespace tq4x
{

/// Numbers strictly inside this distance of zero count as zero, in comparisons and in files.
inline constexpr double SnapLimit = 1e-06;

/// Degrees to radians, for double arithmetic and rounded once for single precision.
inline constexpr double RadiansPerDegree = 0.017453292519943295;
inline constexpr float RadiansPerDegreeSingle = static_cast<float>(RadiansPerDegree);

/// Radians to degrees in single precision.
inline constexpr float DegreesPerRadianSingle = 57.29577951308232f;

/// True strictly inside the snapping interval, judged by the single-precision constant. False for NaN.
constexpr bool IsNegligible(float value)
{
    constexpr float limit = static_cast<float>(SnapLimit);
    return value > -limit && value < limit;
}

/// True strictly inside the snapping interval, judged by the double constant. False for NaN.
constexpr bool IsNegligible(double value)
{
    return value > -SnapLimit && value < SnapLimit;
}

/// Plus zero for a negligible value (a minus zero included), else the value itself.
constexpr float SnapToZero(float value)
{
    return IsNegligible(value) ? 0.0f : value;
}

/// The same in double precision.
constexpr double SnapToZero(double value)
{
    return IsNegligible(value) ? 0.0 : value;
}

} // namespace tq4x
