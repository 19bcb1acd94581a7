#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace tq4x::test
{

/// A number that is known up to an error: what is meant lies within `Value` ± `Error`. Every operation
/// carries the errors of its operands on and adds the rounding of a single-precision operation, so that a
/// formula written with these numbers bounds the error of any program that evaluates it in single or double
/// precision.
struct Approx
{
    double Value = 0.0;
    double Error = 0.0;
};

/// Half a unit in the last place of a single-precision number, relative to it.
inline constexpr double SingleRounding = 0x1p-24;

/// The result of one rounded operation.
inline Approx Rounded(double value, double error)
{
    return {value, error + SingleRounding * (std::abs(value) + error)};
}

/// A double narrowed to single precision.
inline Approx Narrowed(double value)
{
    return Rounded(value, 0.0);
}

inline Approx operator-(const Approx& a)
{
    return {-a.Value, a.Error};
}

inline Approx operator+(const Approx& a, const Approx& b)
{
    return Rounded(a.Value + b.Value, a.Error + b.Error);
}

inline Approx operator-(const Approx& a, const Approx& b)
{
    return a + -b;
}

inline Approx operator*(const Approx& a, const Approx& b)
{
    if (std::isinf(a.Error) || std::isinf(b.Error))
        return {a.Value * b.Value, std::numeric_limits<double>::infinity()};
    return Rounded(a.Value * b.Value,
                   std::abs(a.Value) * b.Error + std::abs(b.Value) * a.Error + a.Error * b.Error);
}

/// Nothing is known of a quotient whose divisor may be 0.
inline Approx operator/(const Approx& a, const Approx& b)
{
    if (std::abs(b.Value) <= b.Error)
        return {0.0, std::numeric_limits<double>::infinity()};
    const double quotient = a.Value / b.Value;
    return Rounded(quotient, (a.Error + std::abs(quotient) * b.Error) / (std::abs(b.Value) - b.Error));
}

/// Negative numbers count as 0.
inline Approx Sqrt(const Approx& a)
{
    const double value = std::max(a.Value, 0.0);
    const double low = std::sqrt(std::max(value - a.Error, 0.0));
    const double high = std::sqrt(value + a.Error);
    const double root = std::sqrt(value);
    return Rounded(root, std::max(high - root, root - low));
}

/// Sine and cosine move by no more than their angle.
inline Approx Sin(const Approx& a)
{
    return Rounded(std::sin(a.Value), std::min(a.Error, 2.0));
}

inline Approx Cos(const Approx& a)
{
    return Rounded(std::cos(a.Value), std::min(a.Error, 2.0));
}

/// A point that is off by less than its distance from the origin turns by the arc sine of their quotient.
inline Approx Atan2(const Approx& y, const Approx& x)
{
    const double distance = std::hypot(x.Value, y.Value);
    const double error = std::hypot(x.Error, y.Error);
    const double turn = error < distance ? std::asin(error / distance) : std::numbers::pi;
    return Rounded(std::atan2(y.Value, x.Value), turn);
}

/// How far two numbers may lie apart that mean the same.
inline double BoundOf(const Approx& a, const Approx& b)
{
    return a.Error + b.Error;
}

inline double Distance(const Approx& a, const Approx& b)
{
    return std::abs(a.Value - b.Value);
}

/// Half a unit of the sixth significant digit, which is how the files print; numbers below 1e-6 are printed
/// as 0. `printed` is the number as it was read, so that it may stand on either side of a power of ten.
inline double PrintedError(double printed)
{
    constexpr double snapLimit = 1e-6;
    constexpr double aboveReading = 1.0 + 1e-6;
    const double magnitude = std::abs(printed) * aboveReading;
    if (magnitude < 2.0 * snapLimit)
        return snapLimit;
    return 0.5 * std::pow(10.0, std::floor(std::log10(magnitude)) - 5.0);
}

/// A number of a file: printed, and read in single precision.
inline Approx Printed(double printed)
{
    return Rounded(printed, PrintedError(printed));
}

} // namespace tq4x::test
