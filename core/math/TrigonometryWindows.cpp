#include "math/Trigonometry.h"

#include <cmath>
#include <utility>

// The compiler's run-time asks the processor, which takes off quarter turns with 66 bits of pi: at a quarter
// turn few bits are left of the result. Here they are taken off with 151 bits first, in the processor's
// extended precision; what remains is below an eighth of a turn, where the processor is exact to the last bit
// of that.

namespace tq4x
{
namespace
{

/// A quarter turn as a sum, from the greatest part down; a part has so few bits that its multiples are exact.
constexpr long double QuarterTurn[] = {0x1.921FB544p+0L, 0x1.0B4611A6p-34L, 0x1.3198A2EP-69L,
                                       0x1.B839A252049C1P-104L};

constexpr long double QuarterTurnsPerRadian = 0.636619772367581343075535053490057448L;

/// What is left of an angle when whole quarter turns are taken off, and how many those were, modulo four.
std::pair<long double, int> Reduce(double radians)
{
    const long double count = std::nearbyint(static_cast<long double>(radians) * QuarterTurnsPerRadian);
    long double rest = radians;
    for (const long double part : QuarterTurn)
        rest -= count * part;
    const auto quarter = static_cast<int>(std::fmod(count, 4.0L));
    return {rest, (quarter + 4) % 4};
}

double SineOfQuarters(long double rest, int quarters)
{
    switch (quarters % 4) {
    case 0:
        return static_cast<double>(std::sin(rest));
    case 1:
        return static_cast<double>(std::cos(rest));
    case 2:
        return static_cast<double>(-std::sin(rest));
    default:
        return static_cast<double>(-std::cos(rest));
    }
}

/// Where the exact multiples end, and for what is no angle at all.
bool IsBeyond(double radians)
{
    constexpr double Limit = 0x1p30;
    return !(std::abs(radians) < Limit);
}

} // namespace

double Sine(double radians)
{
    if (IsBeyond(radians) || radians == 0.0) // which keeps the sign of zero
        return std::sin(radians);
    const auto [rest, quarters] = Reduce(radians);
    return SineOfQuarters(rest, quarters);
}

double Cosine(double radians)
{
    if (IsBeyond(radians))
        return std::cos(radians);
    const auto [rest, quarters] = Reduce(radians);
    return SineOfQuarters(rest, quarters + 1);
}

} // namespace tq4x
