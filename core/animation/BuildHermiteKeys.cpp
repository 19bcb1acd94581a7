#include "animation/BuildHermiteKeys.h"

#include "animation/EvaluateHermite.h"
#include "animation/SegmentFit.h"
#include "math/Scalar.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdint>

namespace tq4x
{
namespace
{

/// Keys at multiples of this index stay until all others are decided, which bounds the stretches to test. The
/// result depends on them.
constexpr std::size_t BlockSize = 1024;
constexpr float SlopeLimit = 32768.0f;

/// The value difference stands undivided where the frames agree.
float Slope(const CurveKey& from, const CurveKey& to)
{
    const float frames = to.Frame - from.Frame;
    const float values = to.Value - from.Value;
    const float slope = frames == 0.0f ? values : values / frames;
    if (slope > SlopeLimit - 1.0f)
        return SlopeLimit - 1.0f;
    return slope < -SlopeLimit ? -SlopeLimit : slope;
}

/// One key after the other takes its slope and is snapped: the slope of a key sees the one before it snapped
/// already and the one behind it as sampled.
void SetSlopes(std::vector<CurveKey>& keys)
{
    for (std::size_t i = 0; i < keys.size(); ++i) {
        CurveKey& key = keys[i];
        const std::size_t former = i == 0 ? 0 : i - 1;
        const std::size_t next = std::min(i + 1, keys.size() - 1);
        key.OutSlope = former == next ? 0.0f : SnapToZero(Slope(keys[former], keys[next]));
        key.InSlope = key.OutSlope;
        key.Frame = SnapToZero(key.Frame);
        key.Value = SnapToZero(key.Value);
    }
}

/// Drops each key that the segment from the last key kept to the key behind it can do without. Keys at block
/// borders stay.
void DropInsideBlocks(std::vector<std::uint8_t>& keep, SegmentFit& fit)
{
    std::size_t last = 0;
    for (std::size_t i = 1; i + 1 < keep.size(); ++i) {
        if (i % BlockSize != 0 && fit.IsWithinTolerance(last, i + 1))
            keep[i] = false;
        else
            last = i;
    }
}

/// Drops the keys at block borders that the segment between their kept neighbours can do without.
void DropBlockBorders(std::vector<std::uint8_t>& keep, SegmentFit& fit)
{
    std::size_t below = 0;
    std::size_t next = 1;
    for (std::size_t border = BlockSize; border + 1 < keep.size(); border += BlockSize) {
        for (; next < border; ++next)
            if (keep[next])
                below = next;
        std::size_t above = border + 1;
        while (!keep[above]) // the last key is always kept
            ++above;
        keep[border] = !fit.IsWithinTolerance(below, above);
    }
}

void EraseDropped(std::vector<CurveKey>& keys, const std::vector<std::uint8_t>& keep)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (keep[i])
            keys[count++] = keys[i];
    keys.resize(count);
}

/// Two keys of a resting channel say no more than one. The slopes are compared with their sign, on
/// purpose: pairs that leave and arrive falling are cut too.
bool IsFlatPair(const std::vector<CurveKey>& keys)
{
    constexpr float limit = static_cast<float>(SnapLimit);
    return keys.size() == 2 && std::abs(keys[0].Value - keys[1].Value) < limit && keys[0].OutSlope < limit &&
           keys[1].InSlope < limit;
}

} // namespace

std::vector<float> SampleFrames(std::size_t count, int frameSteps)
{
    assert(frameSteps >= 1);
    std::vector<float> frames(count);
    for (std::size_t i = 0; i < count; ++i)
        frames[i] = static_cast<float>(i) / static_cast<float>(frameSteps);
    return frames;
}

void BuildHermiteKeys(std::vector<CurveKey>& keys, std::span<const float> samples,
                      std::span<const float> frames, float tolerance)
{
    assert(frames.size() == samples.size());
    keys.clear();
    keys.reserve(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i)
        keys.push_back({.Frame = frames[i], .Value = samples[i]});
    SetSlopes(keys);
    if (keys.size() <= 2)
        return;
    std::vector<std::uint8_t> keep(keys.size(), true);
    SegmentFit fit(keys, samples, frames, tolerance);
    DropInsideBlocks(keep, fit);
    DropBlockBorders(keep, fit);
    EraseDropped(keys, keep);
    if (IsFlatPair(keys))
        keys.resize(1);
}

} // namespace tq4x
