#include "animation/Angles.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace tq4x
{
namespace
{

constexpr float Turn = 360.0f;

bool DiffersByLess(float first, float second, float tolerance)
{
    const float difference = first - second;
    return first == second || (difference > -tolerance && difference < tolerance);
}

float NormalizeAngle(float angle)
{
    if (angle >= Turn)
        return angle - std::trunc(angle / Turn) * Turn;
    if (angle < 0.0f)
        return angle + (1.0f - std::trunc(angle / Turn)) * Turn;
    return angle;
}

/// Where repeated addition has come to.
struct Walk
{
    float Value;
    std::int64_t Steps;
};

/// Number of further steps of `increment` that stay in the binade of `value`, where they all are alike.
std::int64_t StepsInsideBinade(double value, double increment)
{
    const double magnitude = std::abs(value);
    const double low = std::exp2(std::ilogb(magnitude));
    const double room = (value > 0.0) == (increment > 0.0) ? 2.0 * low - magnitude : magnitude - low;
    return std::max<std::int64_t>(0, static_cast<std::int64_t>(room / std::abs(increment)) - 1);
}

/// Adds `step` again and again in single precision, at most `maximumSteps` times and while the value is not
/// below `stopBelow`, ending early when the sum no longer moves.
///
/// Inside one binade the rounded sum moves by the same amount at each step, but for the first where the
/// amount lies halfway between two floats. So as soon as two steps were alike the way to the end of the
/// binade is taken in one go: a value of 1e9 is led back by some dozens of operations.
Walk AddRepeatedly(float value, float step, std::int64_t maximumSteps, float stopBelow)
{
    Walk walk{value, 0};
    double formerIncrement = 0.0;
    while (walk.Steps < maximumSteps && !(walk.Value < stopBelow)) {
        const float next = walk.Value + step;
        if (next == walk.Value)
            break;
        const double increment = static_cast<double>(next) - static_cast<double>(walk.Value);
        const bool isSameBinade = std::ilogb(next) == std::ilogb(walk.Value) && next * walk.Value > 0.0f;
        walk = {next, walk.Steps + 1};
        if (isSameBinade && increment == formerIncrement && std::abs(next) > 4.0f * Turn) {
            const std::int64_t jump = std::min(StepsInsideBinade(next, increment), maximumSteps - walk.Steps);
            walk.Value = static_cast<float>(next + static_cast<double>(jump) * increment);
            walk.Steps += jump;
        }
        formerIncrement = isSameBinade ? increment : 0.0;
    }
    return walk;
}

/// The sample where it continues the one before, whole turns apart from where it was.
float UnwrapSample(float former, float sample)
{
    const float difference = sample - former;
    float distance = std::abs(difference);
    if (!std::isfinite(distance) || distance - Turn == distance)
        return sample;
    float value = sample;
    if (distance >= Turn) {
        // The distance falls beside the value, with its own rounding, and is not taken anew.
        constexpr std::int64_t unlimited = std::numeric_limits<std::int64_t>::max();
        const Walk rest = AddRepeatedly(distance, -Turn, unlimited, Turn);
        const float towards = difference > 0.0f ? -Turn : Turn;
        value = AddRepeatedly(value, towards, rest.Steps, -std::numeric_limits<float>::infinity()).Value;
        distance = rest.Value;
    }
    if (!(distance > 0.5f * Turn))
        return value;
    const float other = value - former > 0.0f ? value - Turn : value + Turn;
    return distance > std::abs(other - former) ? other : value;
}

} // namespace

bool AnglesEqual(float first, float second, float tolerance)
{
    if (DiffersByLess(first, second, tolerance))
        return true;
    const float firstInTurn = NormalizeAngle(first);
    const float secondInTurn = NormalizeAngle(second);
    return DiffersByLess(firstInTurn, secondInTurn, tolerance) ||
           DiffersByLess(first, secondInTurn, tolerance) || DiffersByLess(firstInTurn, second, tolerance);
}

bool UnwrapAngles(std::span<float> samples)
{
    bool changed = false;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        const float value = UnwrapSample(samples[i - 1], samples[i]);
        if (std::abs(value - samples[i]) > 0.0f) { // never for samples that are not finite
            samples[i] = value;
            changed = true;
        }
    }
    return changed;
}

bool RecenterAngles(std::span<float> samples)
{
    if (samples.empty())
        return false;
    float least = samples.front();
    float greatest = samples.front();
    for (const float sample : samples) {
        if (sample < least)
            least = sample;
        if (sample > greatest)
            greatest = sample;
    }
    const float middle = (least + greatest) * 0.5f;
    if (!std::isfinite(middle) || (middle > -Turn && middle < Turn))
        return false;
    const float turns = std::trunc(middle / Turn + (middle > 0.0f ? 0.5f : -0.5f));
    for (float& sample : samples)
        sample += turns * -Turn;
    return true;
}

float DropWholeTurns(float degrees)
{
    return degrees < -Turn || degrees > Turn ? degrees - std::trunc(degrees / Turn) * Turn : degrees;
}

} // namespace tq4x
