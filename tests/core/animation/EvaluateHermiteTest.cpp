#include "animation/EvaluateHermite.h"
#include "animation/SegmentFit.h"

#include <cmath>
#include <random>

namespace tq4x
{
namespace
{

CurveKey Key(float frame, float value, float inSlope, float outSlope)
{
    return {.Frame = frame, .Value = value, .InSlope = inSlope, .OutSlope = outSlope};
}

TEST(EvaluateHermite, GivesTheCubicOfBothKeys)
{
    // The slopes turned away from the segment take no part.
    const CurveKey a = Key(0.0f, 1.0f, 99.0f, 2.0f);
    const CurveKey b = Key(4.0f, 5.0f, -1.0f, 99.0f);

    const struct
    {
        const char* Name;
        float Frame;
        float Value;
    } cases[] = {
        {"first key", 0.0f, 1.0f}, {"quarter", 1.0f, 2.9375f}, // 1 + 4 * 5/32 + 4 * (9/64 * 2 + 3/64)
        {"middle", 2.0f, 4.5f},                                // 3 + 4 * (1/8 * 2 + 1/8)
        {"last key", 4.0f, 5.0f},  {"before", -1.0f, -0.9375f}, {"behind", 8.0f, -15.0f},
    };

    for (const auto& c : cases) {
        const double u = c.Frame / 4.0;
        const double exact = (1.0 - 3.0 * u * u + 2.0 * u * u * u) * 1.0 + (3.0 - 2.0 * u) * u * u * 5.0 +
                             4.0 * (u - 2.0 * u * u + u * u * u) * 2.0 + 4.0 * (u * u * u - u * u) * -1.0;
        EXPECT_DOUBLE_EQ(exact, c.Value) << c.Name;
        EXPECT_EQ(EvaluateHermite(a, b, c.Frame), c.Value) << c.Name;
    }
}

TEST(EvaluateHermite, KeysAtOneFrameGiveTheSecond)
{
    EXPECT_EQ(EvaluateHermite(Key(3, 1, 0, 5), Key(3, 7, 5, 0), 3.0f), 7.0f);
    EXPECT_EQ(EvaluateHermite(Key(3, 1, 0, 5), Key(3, 7, 5, 0), 100.0f), 7.0f);
}

TEST(EvaluateHermite, RestsOnLevelKeysAndRunsStraightOnStraightOnes)
{
    for (float frame = 0.0f; frame <= 10.0f; frame += 0.5f) {
        EXPECT_NEAR(EvaluateHermite(Key(0, 7, 0, 0), Key(10, 7, 0, 0), frame), 7.0f, 1e-5f) << frame;
        EXPECT_NEAR(EvaluateHermite(Key(0, 0, 3, 3), Key(10, 30, 3, 3), frame), 3.0f * frame, 1e-4f) << frame;
    }
}

/// The operations in single precision, one rounding each, in the fixed order.
TEST(EvaluateHermite, RoundsInTheWrittenOrder)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<float> number(-50.0f, 50.0f);
    for (int i = 0; i < 10000; ++i) {
        const CurveKey a = Key(number(random), number(random), 0, number(random));
        const CurveKey b = Key(number(random), number(random), number(random), 0);
        const float frame = number(random);
        const float d = frame - a.Frame;
        const float r = 1 / (b.Frame - a.Frame);
        const float dd = d * d;
        const float q = dd * r;
        const float qr = q * r;
        const float h2 = qr * 3;
        const float c = qr * d;
        const float cr = c * r;
        const float h3 = cr * 2;
        const float first = ((h3 - h2) + 1) * a.Value;
        const float second = (h2 - h3) * b.Value;
        const float third = ((c - q * 2) + d) * a.OutSlope;
        const float fourth = (c - q) * b.InSlope;
        const float value = ((first + second) + third) + fourth;
        ASSERT_EQ(EvaluateHermite(a, b, frame), value) << "seed 11, case " << i;
    }
}

long double ExactHermite(const CurveKey& a, const CurveKey& b, float frame)
{
    using Real = long double;
    const Real length = static_cast<Real>(b.Frame) - static_cast<Real>(a.Frame);
    const Real u = (static_cast<Real>(frame) - static_cast<Real>(a.Frame)) / length;
    const Real h1 = u * u * (3 - 2 * u);
    return (1 - h1) * a.Value + h1 * b.Value + length * u * (1 - u) * (1 - u) * a.OutSlope +
           length * u * u * (u - 1) * b.InSlope;
}

/// A number with an exponent that is spread evenly, so that large and small ones meet.
float SpreadNumber(std::mt19937& random)
{
    std::uniform_real_distribution<float> mantissa(-2.0f, 2.0f);
    std::uniform_int_distribution<int> exponent(-12, 14);
    return std::ldexp(mantissa(random), exponent(random));
}

TEST(HermiteRoundingBound, HoldsAtEveryFrameOfASegment)
{
    std::mt19937 random(23);
    std::uniform_real_distribution<float> part(0.0f, 1.0f);
    double greatestShare = 0.0;
    for (int i = 0; i < 100000; ++i) {
        const float start = std::abs(SpreadNumber(random));
        CurveKey a = Key(start, SpreadNumber(random), 0, SpreadNumber(random));
        CurveKey b =
            Key(start + std::abs(SpreadNumber(random)), SpreadNumber(random), SpreadNumber(random), 0);
        if (i % 3 == 0)
            b.Value = a.Value; // the case that a bound by the values' sizes alone would judge too harshly
        if (i % 3 == 1)
            b.InSlope = a.OutSlope = (b.Value - a.Value) / (b.Frame - a.Frame);
        const float frame = a.Frame + part(random) * (b.Frame - a.Frame);
        if (!(a.Frame < frame && frame < b.Frame))
            continue;
        const long double error = EvaluateHermite(a, b, frame) - ExactHermite(a, b, frame);
        const double bound = HermiteRoundingBound(a, b);
        ASSERT_LE(std::abs(static_cast<double>(error)), bound)
            << "seed 23, case " << i << ": " << a.Frame << " to " << b.Frame << " at " << frame;
        greatestShare = std::max(greatestShare, std::abs(static_cast<double>(error)) / bound);
    }
    EXPECT_GT(greatestShare, 0.1) << "the cases don't come near the bound and prove little";
}

} // namespace
} // namespace tq4x
