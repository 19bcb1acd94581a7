#include "animation/SegmentFit.h"

#include "animation/EvaluateHermite.h"

#include <algorithm>
#include <cmath>

namespace tq4x
{
namespace
{

/// Shorter segments are evaluated at once: that is as quick as judging them.
constexpr std::size_t ShortSegment = 8;

/// Beyond these the bound of rounding errors says nothing: products could leave the range of normal floats.
constexpr double GreatestValue = 1e30;
constexpr double GreatestLength = 1e9;
constexpr double LeastStep = 1e-9;

double LengthOf(const CurveKey& a, const CurveKey& b)
{
    return static_cast<double>(b.Frame) - static_cast<double>(a.Frame);
}

/// Where a cubic that leaves key `a` with its value and slope misses key `b`.
struct Miss
{
    double Value;
    double Slope;
};

Miss MissOf(const CurveKey& a, const CurveKey& b, double quadratic, double cubic)
{
    const double length = LengthOf(a, b);
    const double value = a.Value + length * (a.OutSlope + length * (quadratic + length * cubic));
    const double slope = a.OutSlope + length * (2.0 * quadratic + length * 3.0 * cubic);
    return {b.Value - value, b.InSlope - slope};
}

} // namespace

double HermiteRoundingBound(const CurveKey& a, const CurveKey& b)
{
    // Counting the roundings of each term, with those that act on both values alike taken off: 13 units for
    // the difference of the values, 5 for the values, 8 for a slope times the length. Some are added for
    // products of roundings.
    constexpr double unit = 0x1p-24;
    const double difference = std::abs(static_cast<double>(a.Value) - static_cast<double>(b.Value));
    const double value =
        std::max(std::abs(static_cast<double>(a.Value)), std::abs(static_cast<double>(b.Value)));
    const double slopes =
        std::abs(static_cast<double>(a.OutSlope)) + std::abs(static_cast<double>(b.InSlope));
    return unit * (16.0 * difference + 8.0 * value + 12.0 * LengthOf(a, b) * slopes);
}

SegmentFit::SegmentFit(std::span<const CurveKey> keys, std::span<const float> samples,
                       std::span<const float> frames, float tolerance)
    : m_keys(keys),
      m_samples(samples),
      m_frames(frames),
      m_tolerance(tolerance)
{}

bool SegmentFit::IsWithinTolerance(std::size_t first, std::size_t last)
{
    if (m_stretch.First != first || m_stretch.End > last)
        Restart(first, {});
    if (last - first <= ShortSegment)
        return IsEveryErrorSmall(first, last);
    Extend(last);
    if (IsProvablyWithin(last))
        return true;
    if (!IsEveryErrorSmall(first, last))
        return false;
    if (std::isfinite(m_stretch.Distance) &&
        HermiteRoundingBound(m_keys[first], m_keys[last]) < static_cast<double>(m_tolerance))
        Restart(first, ReferenceOf(first, last));
    return true;
}

void SegmentFit::Restart(std::size_t first, const Reference& reference)
{
    m_reference = reference;
    m_stretch = {.First = first, .End = first + 1};
}

void SegmentFit::Extend(std::size_t end)
{
    const CurveKey& key = m_keys[m_stretch.First];
    const double value = key.Value;
    const double slope = key.OutSlope;
    for (; m_stretch.End < end; ++m_stretch.End) {
        const float frame = m_frames[m_stretch.End];
        const double d = static_cast<double>(frame) - static_cast<double>(key.Frame);
        const double linear = slope * d;
        const double quadratic = m_reference.Quadratic * d * d;
        const double cubic = m_reference.Cubic * d * d * d;
        // The reference cancels where it turns back; its own rounding counts then.
        const double rounding =
            1e-15 * (std::abs(value) + std::abs(linear) + std::abs(quadratic) + std::abs(cubic));
        const double distance =
            std::abs(m_samples[m_stretch.End] - (value + linear + quadratic + cubic)) + rounding;
        if (!std::isfinite(distance))
            m_stretch.Distance = std::numeric_limits<double>::infinity();
        m_stretch.Distance = std::max(m_stretch.Distance, distance);
        m_stretch.LeastFrame = std::min(m_stretch.LeastFrame, frame);
        m_stretch.GreatestFrame = std::max(m_stretch.GreatestFrame, frame);
    }
}

bool SegmentFit::IsProvablyWithin(std::size_t last) const
{
    const CurveKey& a = m_keys[m_stretch.First];
    const CurveKey& b = m_keys[last];
    const double length = LengthOf(a, b);
    const double magnitude = std::abs(static_cast<double>(a.Value)) + std::abs(static_cast<double>(b.Value));
    if (!(length < GreatestLength && magnitude < GreatestValue))
        return false;
    if (!(m_stretch.LeastFrame - a.Frame > LeastStep && m_stretch.GreatestFrame < b.Frame))
        return false;
    const Miss miss = MissOf(a, b, m_reference.Quadratic, m_reference.Cubic);
    const double difference = std::abs(miss.Value) + 4.0 / 27.0 * length * std::abs(miss.Slope);
    const double bound = m_stretch.Distance + difference + HermiteRoundingBound(a, b);
    // Resting at exactly 0 is met exactly. Else there is room for the rounding of this sum, of the error
    // itself and of products below the range of normal floats.
    return bound == 0.0 || bound * (1.0 + 1e-6) + 1e-36 < static_cast<double>(m_tolerance);
}

bool SegmentFit::IsEveryErrorSmall(std::size_t first, std::size_t last) const
{
    const CurveKey& a = m_keys[first];
    const CurveKey& b = m_keys[last];
    float worst = 0.0f;
    for (std::size_t i = first + 1; i < last; ++i) {
        const float error = std::abs(m_samples[i] - EvaluateHermite(a, b, m_frames[i]));
        if (error > worst) { // an error that is not a number judges nothing
            worst = error;
            if (!(error < m_tolerance))
                return !(error >= m_tolerance);
        }
    }
    return true;
}

SegmentFit::Reference SegmentFit::ReferenceOf(std::size_t first, std::size_t last) const
{
    const CurveKey& a = m_keys[first];
    const CurveKey& b = m_keys[last];
    const double length = LengthOf(a, b);
    const Miss miss = MissOf(a, b, 0.0, 0.0);
    return {.Quadratic = (3.0 * miss.Value - length * miss.Slope) / (length * length),
            .Cubic = (length * miss.Slope - 2.0 * miss.Value) / (length * length * length)};
}

} // namespace tq4x
