#include "animation/SegmentFit.h"
#include "animation/BuildHermiteKeys.h"
#include "animation/EvaluateHermite.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace tq4x
{
namespace
{

/// Largest error of a segment at its inner samples.
float WorstError(const std::vector<CurveKey>& keys, const std::vector<float>& samples,
                 const std::vector<float>& frames, std::size_t first, std::size_t last)
{
    float worst = 0.0f;
    for (std::size_t i = first + 1; i < last; ++i)
        worst = std::max(worst, std::abs(samples[i] - EvaluateHermite(keys[first], keys[last], frames[i])));
    return worst;
}

/// Key reduction asks in ascending order; the answers are the same in any order.
TEST(SegmentFit, AnswersInAnyOrder)
{
    constexpr float tolerance = 0.02f;
    std::mt19937 random(71);
    for (int list = 0; list < 40; ++list) {
        std::vector<float> samples;
        std::vector<CurveKey> keys;
        const std::vector<float> frames = SampleFrames(200, 1 + list % 3);
        for (std::size_t i = 0; i < frames.size(); ++i) {
            const float t = static_cast<float>(i);
            samples.push_back(list % 2 == 0 ? std::sin(0.02f * t) : 3.0f + 0.001f * std::sin(t));
            const float slope =
                list % 2 == 0 ? 0.02f * static_cast<float>(1 + list % 3) * std::cos(0.02f * t) : 0;
            keys.push_back({.Frame = frames[i], .Value = samples[i], .InSlope = slope, .OutSlope = slope});
        }
        SegmentFit fit(keys, samples, frames, tolerance);
        for (int question = 0; question < 200; ++question) {
            const std::size_t first = std::uniform_int_distribution<std::size_t>(0, 3)(random) * 40;
            const std::size_t last = std::uniform_int_distribution<std::size_t>(first + 1, 199)(random);
            ASSERT_EQ(fit.IsWithinTolerance(first, last),
                      WorstError(keys, samples, frames, first, last) < tolerance)
                << "seed 71, list " << list << ": " << first << " to " << last;
        }
    }
}

} // namespace
} // namespace tq4x
