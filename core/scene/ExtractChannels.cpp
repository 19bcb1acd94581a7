#include "scene/ExtractChannels.h"

#include "animation/BuildHermiteKeys.h"
#include "animation/FilterEulerTriple.h"
#include "scene/Bone.h"

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

namespace tq4x
{
namespace
{

using AxisCurves = std::array<AnimationCurve, 3>;

void PrepareCurves(AxisCurves& curves, std::size_t sampleCount, float tolerance, bool isAngle)
{
    for (AnimationCurve& curve : curves) {
        curve = AnimationCurve{};
        curve.IsAngle = isAngle;
        curve.Tolerance = tolerance;
        curve.Samples.resize(sampleCount);
    }
}

void StoreSample(AxisCurves& curves, std::size_t index, const Vector3& value)
{
    curves[0].Samples[index] = value.X;
    curves[1].Samples[index] = value.Y;
    curves[2].Samples[index] = value.Z;
}

Vector3 FirstSample(const AxisCurves& curves)
{
    return {curves[0].Samples.front(), curves[1].Samples.front(), curves[2].Samples.front()};
}

/// The range alone decides; where the first sample lies in it does not, unlike in the other curves' test.
bool IsMoving(const std::vector<float>& samples, float tolerance)
{
    float least = std::numeric_limits<float>::infinity();
    float greatest = -std::numeric_limits<float>::infinity();
    for (const float sample : samples) {
        if (sample < least)
            least = sample;
        if (sample > greatest)
            greatest = sample;
    }
    return samples.size() > 1 && greatest - least > tolerance;
}

void BuildKeys(AxisCurves& curves, const std::vector<float>& frames)
{
    for (AnimationCurve& curve : curves) {
        curve.IsConstant = !IsMoving(curve.Samples, curve.Tolerance);
        if (!curve.IsConstant)
            BuildHermiteKeys(curve.Keys, curve.Samples, frames, curve.Tolerance);
    }
}

} // namespace

void ExtractChannels(Bone& bone, const ChannelSettings& settings)
{
    const std::size_t count = bone.TransformSamples.size();
    if (count == 0)
        return;
    const NodeTolerances& tolerances = settings.Tolerances;
    PrepareCurves(bone.ScaleCurves, count, tolerances.Scale, false);
    PrepareCurves(bone.RotateCurves, count, tolerances.Rotate, true);
    PrepareCurves(bone.TranslateCurves, count, tolerances.Translate, false);
    for (std::size_t i = 0; i < count; ++i) {
        const TransformParts parts = DecomposeMatrix(bone.TransformSamples[i]);
        StoreSample(bone.ScaleCurves, i, parts.Scale);
        StoreSample(bone.RotateCurves, i, parts.Rotate);
        StoreSample(bone.TranslateCurves, i, parts.Translate);
    }
    FilterEulerTriple(bone.RotateCurves[0].Samples, bone.RotateCurves[1].Samples,
                      bone.RotateCurves[2].Samples);
    const std::vector<float> frames = SampleFrames(count, settings.FrameSteps);
    BuildKeys(bone.ScaleCurves, frames);
    BuildKeys(bone.RotateCurves, frames);
    BuildKeys(bone.TranslateCurves, frames);
    const Matrix44 first = bone.TransformSamples.front();
    bone.TransformSamples = std::vector<Matrix44>{first}; // gives the memory of the others back
    bone.Scale = FirstSample(bone.ScaleCurves);
    bone.Rotate = FirstSample(bone.RotateCurves);
    bone.Translate = FirstSample(bone.TranslateCurves);
}

} // namespace tq4x
