#include "material/LookupTable.h"

#include "math/Scalar.h"
#include "math/Trigonometry.h"

#include <cmath>
#include <limits>

namespace tq4x
{
namespace
{

constexpr float ValueStep = 1.0f / 256.0f;  ///< from one entry of a table over 0 to 1 to the next
constexpr float MiddleStep = 1.0f / 128.0f; ///< the same for a table over -1 to 1
constexpr std::size_t Middle = 128;         ///< entry of x = 0 in a table over -1 to 1
constexpr float SingularValue = 1000.0f;    ///< stands where a distribution has no value

float At(std::size_t i, float step)
{
    return static_cast<float>(i) * step;
}

/// Fills entries `first` to `last` of the differences; what follows the last value is `end`.
void FillDifferences(std::vector<float>& samples, std::size_t first, std::size_t last, float end)
{
    for (std::size_t i = first; i < last; ++i)
        samples[LookupValueCount + i] = samples[i + 1] - samples[i];
    samples[LookupValueCount + last] = end - samples[last];
}

void SnapSamples(std::vector<float>& samples)
{
    for (float& sample : samples)
        sample = SnapToZero(sample);
}

/// The generator of all tables over 0 to 1: values by entry, then what follows the last one.
template<typename ValueOf>
void Generate(std::vector<float>& samples, ValueOf valueOf, float end)
{
    samples.assign(LookupSampleCount, 0.0f);
    for (std::size_t i = 0; i < LookupValueCount; ++i)
        samples[i] = valueOf(i);
    FillDifferences(samples, 0, LookupValueCount - 1, end);
    SnapSamples(samples);
}

float Specular(float x, float exponent, float scale)
{
    if (x == 0.0f && exponent < 0.0f)
        return std::numeric_limits<float>::max();
    return static_cast<float>(std::pow(double{x}, double{exponent})) * scale;
}

float Zenith(float m, float x)
{
    const float root = (m - 1.0f) * x * x + 1.0f;
    const float d = root * root;
    return d == 0.0f ? SingularValue : m * m / d;
}

float Azimuth(float m, float x)
{
    const float d = m * m * (1.0f - x * x) + x * x;
    return d == 0.0f ? SingularValue : static_cast<float>(std::sqrt(double{1.0f / d})) * m;
}

/// The entry, of 256 for a cosine of 1, at which the cosine of an angle in degrees lies.
int EntryOfCosine(float angle)
{
    const double cosine = Cosine(double{angle * RadiansPerDegreeSingle});
    return std::isfinite(cosine) ? static_cast<int>(cosine * static_cast<double>(LookupValueCount)) : 0;
}

} // namespace

void LookupTable::BuildSpecular(float exponent, float scale)
{
    const auto valueOf = [&](std::size_t i) { return Specular(At(i, ValueStep), exponent, scale); };
    Generate(Samples, valueOf, 1.0f);
}

void LookupTable::BuildAnisotropicZenith(float roughness)
{
    const auto valueOf = [&](std::size_t i) { return Zenith(roughness, At(i, ValueStep)); };
    Generate(Samples, valueOf, Zenith(roughness, 1.0f));
}

void LookupTable::BuildAnisotropicAzimuth(float roughness)
{
    Samples.assign(LookupSampleCount, 0.0f);
    for (std::size_t i = 0; i < Middle; ++i) {
        const float value = Azimuth(roughness, At(i, MiddleStep));
        Samples[Middle + i] = value;
        Samples[Middle - i] = value;
    }
    Samples[0] = Samples[1];
    // Two halves: the first ends towards the value at x = 1, the second runs into the first.
    FillDifferences(Samples, 0, Middle - 1, Azimuth(roughness, 1.0f));
    FillDifferences(Samples, Middle, LookupValueCount - 1, Samples[0]);
    SnapSamples(Samples);
}

void LookupTable::BuildSpotRange(float innerAngle, float outerAngle)
{
    const int high = EntryOfCosine(innerAngle);
    const int low = EntryOfCosine(outerAngle);
    const auto valueOf = [&](std::size_t entry) {
        const int i = static_cast<int>(entry);
        if (i < low)
            return 0.0f;
        return i >= high ? 1.0f : static_cast<float>(i - low) / static_cast<float>(high - low);
    };
    Generate(Samples, valueOf, valueOf(LookupValueCount));
}

} // namespace tq4x
