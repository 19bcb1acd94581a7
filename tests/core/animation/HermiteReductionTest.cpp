#include "animation/BuildHermiteKeys.h"
#include "animation/EvaluateHermite.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace tq4x
{
namespace
{

float Snap(float value)
{
    return value > -1e-6f && value < 1e-6f ? 0.0f : value;
}

std::vector<CurveKey> LiteralKeys(const std::vector<float>& samples, const std::vector<float>& frames)
{
    const std::size_t n = samples.size();
    std::vector<CurveKey> keys(n);
    for (std::size_t i = 0; i < n; ++i)
        keys[i] = {.Frame = frames[i], .Value = samples[i]};
    for (std::size_t i = 0; i < n; ++i) {
        float slope = 0.0f;
        if (n > 1) {
            const std::size_t from = i == 0 ? 0 : i - 1;
            const std::size_t to = i == n - 1 ? n - 1 : i + 1;
            const float values = keys[to].Value - keys[from].Value;
            const float difference = keys[to].Frame - keys[from].Frame;
            slope = difference == 0.0f ? values : values / difference;
        }
        slope = slope > 32767.0f ? 32767.0f : slope < -32768.0f ? -32768.0f : slope;
        keys[i].Frame = Snap(keys[i].Frame);
        keys[i].Value = Snap(keys[i].Value);
        keys[i].InSlope = keys[i].OutSlope = Snap(slope);
    }
    return keys;
}

/// The reduction in its plain form: every segment is evaluated at every sample.
class LiteralReduction
{
public:
    LiteralReduction(const std::vector<float>& samples, const std::vector<float>& frames, float tolerance)
        : m_samples(samples),
          m_frames(frames),
          m_tolerance(tolerance),
          m_keys(LiteralKeys(samples, frames))
    {}

    std::vector<CurveKey> Run()
    {
        const std::size_t n = m_keys.size();
        if (n <= 2)
            return m_keys;
        std::vector<bool> keep(n, true);
        std::size_t last = 0;
        for (std::size_t i = 1; i <= n - 2; ++i) {
            if (i % 1024 == 0 || MustStay(last, i + 1))
                last = i;
            else
                keep[i] = false;
        }
        if (n - 1 > 1024)
            for (std::size_t b = 1024; b <= n - 2; b += 1024) {
                std::size_t below = b - 1;
                while (below > 0 && !keep[below])
                    --below;
                std::size_t above = b + 1;
                while (above < n && !keep[above])
                    ++above;
                if (!MustStay(below, above))
                    keep[b] = false;
            }
        return Rebuild(keep);
    }

private:
    bool MustStay(std::size_t first, std::size_t last) const
    {
        float worst = 0.0f;
        for (std::size_t j = first + 1; j < last; ++j) {
            const float error =
                std::abs(m_samples[j] - EvaluateHermite(m_keys[first], m_keys[last], m_frames[j]));
            if (error > worst) {
                worst = error;
                if (!(error < m_tolerance))
                    break;
            }
        }
        return worst != 0.0f && worst >= m_tolerance;
    }

    std::vector<CurveKey> Rebuild(const std::vector<bool>& keep) const
    {
        std::vector<CurveKey> kept;
        for (std::size_t i = 0; i < keep.size(); ++i)
            if (keep[i])
                kept.push_back(m_keys[i]);
        if (kept.size() == 2 && std::abs(kept[0].Value - kept[1].Value) < 1e-6f && kept[0].OutSlope < 1e-6f &&
            kept[1].InSlope < 1e-6f)
            kept.pop_back();
        return kept;
    }

    const std::vector<float>& m_samples;
    const std::vector<float>& m_frames;
    float m_tolerance;
    std::vector<CurveKey> m_keys;
};

/// The bits of a key, so that a value that is no number equals itself.
std::array<std::uint32_t, 4> Bits(const CurveKey& key)
{
    return {std::bit_cast<std::uint32_t>(key.Frame), std::bit_cast<std::uint32_t>(key.Value),
            std::bit_cast<std::uint32_t>(key.InSlope), std::bit_cast<std::uint32_t>(key.OutSlope)};
}

std::vector<std::array<std::uint32_t, 4>> Bits(const std::vector<CurveKey>& keys)
{
    std::vector<std::array<std::uint32_t, 4>> bits;
    for (const CurveKey& key : keys)
        bits.push_back(Bits(key));
    return bits;
}

/// Lists of all the manners that channels have, glued from stretches of random lengths.
class SampleMaker
{
public:
    explicit SampleMaker(std::uint32_t seed) : m_random(seed) {}

    std::vector<float> Make(std::size_t count)
    {
        std::vector<float> samples;
        m_scale = std::ldexp(1.0f, Int(-6, 12));
        const int stretch = Int(0, 1) == 0 ? static_cast<int>(count) : Int(3, 400);
        while (samples.size() < count)
            Append(samples, std::min(count - samples.size(), static_cast<std::size_t>(Int(1, stretch))));
        return samples;
    }

    float Tolerance()
    {
        constexpr float nan = std::numeric_limits<float>::quiet_NaN();
        const float tolerances[] = {0.01f, 0.1f,   0.001f, 1.0f,  1e-5f, 0.0f,
                                    1e-8f, 100.0f, 1e-38f, -0.5f, nan};
        return tolerances[Int(0, 3) != 0 ? Int(0, 3) : Int(0, 10)];
    }

    std::vector<float> Frames(std::size_t count)
    {
        const int steps[] = {1, 1, 2, 3, 5, 10};
        switch (Int(0, 9)) {
        case 0: { // of a lookup table
            std::vector<float> frames(count);
            for (std::size_t i = 0; i < count; ++i)
                frames[i] = (static_cast<float>(i) - 127.0f) / 127.0f * 255.0f;
            return frames;
        }
        case 1: { // falling, standing, far away
            std::vector<float> frames(count);
            for (float& frame : frames)
                frame = Number() * 100.0f;
            return frames;
        }
        case 2: { // so dense that the first frames are snapped
            std::vector<float> frames(count);
            for (std::size_t i = 0; i < count; ++i)
                frames[i] = static_cast<float>(i) * 1e-7f;
            return frames;
        }
        default:
            return SampleFrames(count, steps[Int(0, 5)]);
        }
    }

    int Int(int first, int last) { return std::uniform_int_distribution<int>(first, last)(m_random); }

private:
    float Number() { return std::normal_distribution<float>(0.0f, 1.0f)(m_random); }

    void Append(std::vector<float>& samples, std::size_t count)
    {
        const float start = Int(0, 2) == 0 || samples.empty() ? m_scale * Number() : samples.back();
        const float step = m_scale * Number() * 0.01f;
        const float noise = m_scale * std::ldexp(1.0f, Int(-20, -4));
        const float speed = 0.001f * std::ldexp(1.0f, Int(0, 10));
        const int manner = Int(0, 11);
        for (std::size_t i = 0; i < count; ++i) {
            const float t = static_cast<float>(i);
            samples.push_back(Sample(manner, t, start, step, noise, speed));
        }
    }

    float Sample(int manner, float t, float start, float step, float noise, float speed)
    {
        switch (manner) {
        case 0:
        case 1: // rests
            return start;
        case 2: // straight
            return start + step * t;
        case 3: // steps
            return start + step * std::floor(t * 0.05f) * 20.0f;
        case 4: // noise
            return start + noise * Number();
        case 5: // straight, with noise
            return start + step * t + noise * Number();
        case 6: // waves
            return start + m_scale * std::sin(speed * t);
        case 7: // eases
            return start + step * 0.001f * t * t;
        case 8: // zero
            return 0.0f;
        case 9: // below what is snapped
            return 1e-6f * Number();
        case 10: // huge
            return Int(0, 50) == 0 ? 1e38f * Number() : start;
        default: // not a number now and then
            return Int(0, 40) == 0 ? (Int(0, 1) == 0 ? std::numeric_limits<float>::quiet_NaN()
                                                     : std::numeric_limits<float>::infinity())
                                   : start;
        }
    }

    std::mt19937 m_random;
    float m_scale = 1.0f;
};

void ExpectLiteral(std::uint32_t seed, std::size_t count)
{
    SampleMaker maker(seed);
    const std::vector<float> samples = maker.Make(count);
    const std::vector<float> frames = maker.Frames(count);
    const float tolerance = maker.Tolerance();
    std::vector<CurveKey> keys;
    BuildHermiteKeys(keys, samples, frames, tolerance);
    const std::vector<CurveKey> literal = LiteralReduction(samples, frames, tolerance).Run();
    ASSERT_EQ(Bits(keys), Bits(literal))
        << "seed " << seed << ", " << count << " samples, tolerance " << tolerance;
}

TEST(HermiteReduction, EqualsTheLiteralScanOnShortLists)
{
    for (std::uint32_t seed = 0; seed < 4000; ++seed)
        ExpectLiteral(seed, seed % 60);
}

TEST(HermiteReduction, EqualsTheLiteralScanOnLongLists)
{
    for (std::uint32_t seed = 0; seed < 150; ++seed)
        ExpectLiteral(1000000 + seed, 200 + 5 * seed);
}

TEST(HermiteReduction, EqualsTheLiteralScanOverBlockBorders)
{
    for (std::uint32_t seed = 0; seed < 30; ++seed)
        ExpectLiteral(2000000 + seed, 1020 + 97 * seed);
}

/// Where the straight reference, the curved one and the bound of rounding errors are all near the tolerance.
TEST(HermiteReduction, EqualsTheLiteralScanNearTheTolerance)
{
    std::mt19937 random(53);
    std::normal_distribution<float> number(0.0f, 1.0f);
    for (int list = 0; list < 300; ++list) {
        const float level = std::ldexp(number(random), list % 16);
        const float tolerance = std::abs(level) * std::ldexp(1.0f, -8 - list % 14) + 1e-6f;
        const float slope = 0.1f * number(random);
        std::vector<float> samples;
        for (int i = 0; i < 250; ++i)
            samples.push_back(level + slope * static_cast<float>(i) + 0.4f * tolerance * number(random));
        const std::vector<float> frames = SampleFrames(samples.size(), 1);
        std::vector<CurveKey> keys;
        BuildHermiteKeys(keys, samples, frames, tolerance);
        ASSERT_EQ(Bits(keys), Bits(LiteralReduction(samples, frames, tolerance).Run()))
            << "seed 53, list " << list;
    }
}

/// What a reader of the file sees at a frame.
float Evaluate(const std::vector<CurveKey>& keys, float frame)
{
    if (keys.size() == 1 || frame <= keys.front().Frame)
        return keys.front().Value;
    const auto next = std::ranges::lower_bound(keys, frame, {}, &CurveKey::Frame);
    if (next == keys.end())
        return keys.back().Value;
    return next->Frame == frame ? next->Value : EvaluateHermite(*(next - 1), *next, frame);
}

TEST(HermiteReduction, StaysWithinTheToleranceAtEverySample)
{
    std::mt19937 random(61);
    std::normal_distribution<float> number(0.0f, 1.0f);
    for (int list = 0; list < 400; ++list) {
        const float tolerance = std::ldexp(0.01f, list % 12 - 4);
        const float speed = 0.001f * std::ldexp(1.0f, list % 10);
        const float noise = list % 3 == 0 ? 0.0f : tolerance * std::ldexp(1.0f, list % 5 - 3);
        std::vector<float> samples;
        for (int i = 0; i < 300; ++i)
            samples.push_back(10.0f * std::sin(speed * static_cast<float>(i)) + noise * number(random));
        const int steps = 1 + list % 10;
        const std::vector<float> frames = SampleFrames(samples.size(), steps);
        std::vector<CurveKey> keys;
        BuildHermiteKeys(keys, samples, frames, tolerance);
        for (std::size_t i = 0; i < samples.size(); ++i)
            ASSERT_LE(std::abs(Evaluate(keys, frames[i]) - samples[i]), tolerance + 1e-6f)
                << "seed 61, list " << list << ", sample " << i << " of " << keys.size() << " keys";
    }
}

TEST(HermiteReduction, LongRestingAndStraightChannelsAreQuick)
{
    // Minutes if every sample were evaluated for every key.
    for (const float step : {0.0f, 0.001f}) {
        std::vector<float> samples(400000);
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = 5.0f + step * static_cast<float>(i % 1000);
        std::vector<CurveKey> keys;
        BuildHermiteKeys(keys, samples, SampleFrames(samples.size(), 1), 0.01f);
        EXPECT_EQ(keys.size() == 1, step == 0.0f);
    }
}

} // namespace
} // namespace tq4x
