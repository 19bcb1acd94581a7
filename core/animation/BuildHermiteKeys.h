#pragma once

#include "animation/AnimationCurve.h"

#include <concepts>
#include <cstddef>
#include <span>
#include <vector>

namespace tq4x
{

/// The frames of the first `count` samples, `frameSteps` samples a frame. `frameSteps` is at least 1.
std::vector<float> SampleFrames(std::size_t count, int frameSteps);

/// Turns samples into the keys of a Hermite curve that stays within `tolerance` of every sample.
///
/// Each sample becomes a key whose slope is the central difference of its neighbours; keys that the curve
/// does not need are dropped, the others keep their slopes. The first and the last key stay, except that a
/// flat curve of more than two samples ends as one key. A tolerance of 0 drops a key only where the curve
/// meets every sample exactly. Samples that are not numbers give keys like all others and judge nothing.
/// Example: 0, 1, 2, 3 at frames 0 to 3 with tolerance 0.01 gives the keys 0 and 3, both with slope 1.
///
/// `frames` has the length of `samples`. Near-linear on resting, straight, smooth and noisy channels. At
/// worst a sample costs as many evaluations as the segment that swallows it is long, at most 1024; every
/// 1024th sample is judged once more over the segment between its neighbours, however long that is.
void BuildHermiteKeys(std::vector<CurveKey>& keys, std::span<const float> samples,
                      std::span<const float> frames, float tolerance);

/// The same with the frame of each sample given by a function of its index.
template<std::invocable<std::size_t> FrameOf>
void BuildHermiteKeys(std::vector<CurveKey>& keys, std::span<const float> samples, FrameOf frameOf,
                      float tolerance)
{
    std::vector<float> frames(samples.size());
    for (std::size_t i = 0; i < frames.size(); ++i)
        frames[i] = frameOf(i);
    BuildHermiteKeys(keys, samples, std::span<const float>(frames), tolerance);
}

} // namespace tq4x
