#pragma once

#include "animation/AnimationCurve.h"

#include <cstddef>
#include <limits>
#include <span>

namespace tq4x
{

/// Answers whether the Hermite segment between two keys stays within the tolerance of the samples between
/// them, where the questions come as key reduction asks them: many times from one first key to a last key
/// that moves on.
///
/// Evaluating every sample anew for each question costs the square of the segment's length. So the distance
/// of the samples from a reference cubic through the first key, with that key's slope, is kept as the segment
/// grows. Two cubics that share value and slope at one end differ by at most
///     |value difference| + 4/27 * length * |slope difference|
/// taken at the other end, since the Hermite basis functions of the far key reach 1 and 4/27. If distance,
/// difference and a bound of what single-precision evaluation can lose together lie below the tolerance, the
/// evaluation would have found no error above it either. If not, all samples are evaluated, and if they pass,
/// the segment becomes the new reference. The first reference is the straight line along the key's slope.
/// The answers are those of evaluating always.
class SegmentFit
{
public:
    /// The spans must outlive the object. Key i stands at sample i.
    SegmentFit(std::span<const CurveKey> keys, std::span<const float> samples, std::span<const float> frames,
               float tolerance);

    /// True if no sample strictly between the keys `first` and `last` lies off the segment by the tolerance
    /// or more; a segment that meets every sample exactly passes under any tolerance. Needs `first` < `last`.
    bool IsWithinTolerance(std::size_t first, std::size_t last);

private:
    /// A cubic through the first key: value and slope are the key's.
    struct Reference
    {
        double Quadratic = 0.0;
        double Cubic = 0.0;
    };

    /// What is known about the samples behind the first key, up to but without `End`.
    struct Stretch
    {
        std::size_t First = 0;
        std::size_t End = 1;
        double Distance = 0.0; ///< largest distance from the reference; infinity for samples not finite
        float LeastFrame = std::numeric_limits<float>::infinity();
        float GreatestFrame = -std::numeric_limits<float>::infinity();
    };

    void Restart(std::size_t first, const Reference& reference);
    void Extend(std::size_t end);
    bool IsProvablyWithin(std::size_t last) const;
    bool IsEveryErrorSmall(std::size_t first, std::size_t last) const;
    Reference ReferenceOf(std::size_t first, std::size_t last) const;

    std::span<const CurveKey> m_keys;
    std::span<const float> m_samples;
    std::span<const float> m_frames;
    float m_tolerance;
    Reference m_reference;
    Stretch m_stretch;
};

/// Upper bound of the error that `EvaluateHermite` can make by rounding at any frame between two keys, for
/// frames and values far from the ends of single precision's range.
double HermiteRoundingBound(const CurveKey& a, const CurveKey& b);

} // namespace tq4x
