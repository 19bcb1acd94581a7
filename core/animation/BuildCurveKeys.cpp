#include "animation/BuildCurveKeys.h"

#include "animation/Angles.h"
#include "animation/BuildHermiteKeys.h"
#include "math/Scalar.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tq4x
{
namespace
{

/// Equal values never differ, so that a tolerance of 0 tells apart what is apart.
bool DiffersBy(float first, float second, float tolerance)
{
    return first != second && std::abs(first - second) >= tolerance;
}

} // namespace

void IsConstantCheck(AnimationCurve& curve)
{
    curve.IsConstant = std::ranges::none_of(curve.Samples, [&](float sample) {
        return DiffersBy(sample, curve.Samples.front(), curve.Tolerance);
    });
}

void UpdateNeedsOutput(AnimationCurve& curve, float defaultValue)
{
    curve.NeedsOutput = !curve.Samples.empty();
    if (curve.Samples.empty() || !curve.IsConstant)
        return;
    const float first = curve.Samples.front();
    const float rest = SnapToZero(defaultValue);
    const bool isAtRest = curve.IsAngle ? AnglesEqual(first, rest, static_cast<float>(SnapLimit))
                                        : first == rest || IsNegligible(first - rest);
    curve.NeedsOutput = !isAtRest;
}

void BuildCurveKeys(AnimationCurve& curve, bool unwrap, int frameSteps)
{
    std::vector<float> samples = curve.Samples;
    if (curve.IsAngle) {
        if (unwrap)
            UnwrapAngles(samples);
        RecenterAngles(samples);
    }
    BuildHermiteKeys(curve.Keys, samples, SampleFrames(samples.size(), frameSteps), curve.Tolerance);
}

void BuildStepKeys(AnimationCurve& curve, int frameSteps)
{
    curve.Keys.clear();
    const std::vector<float> frames = SampleFrames(curve.Samples.size(), frameSteps);
    for (std::size_t i = 0; i < curve.Samples.size(); ++i)
        if (i == 0 || DiffersBy(curve.Samples[i], curve.Keys.back().Value, curve.Tolerance))
            curve.Keys.push_back({.Frame = frames[i], .Value = curve.Samples[i]});
}

} // namespace tq4x
