#pragma once

namespace XSI::MATH
{

inline constexpr double PI = 3.14159265358979323846;

inline constexpr double DegreesToRadians(double degrees)
{
    return degrees * (PI / 180.0);
}

inline constexpr double RadiansToDegrees(double radians)
{
    return radians * (180.0 / PI);
}

} // namespace XSI::MATH
