#include "geometry/QuantizeStream.h"

#include "math/Scalar.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tq4x
{
namespace
{

/// By `QuantizedMode`.
constexpr std::array<QuantizationLimits, 6> Limits{{
    {1.0f, 0.0f},
    {32767.0f, -32767.0f},
    {65535.0f, 0.0f},
    {127.0f, -127.0f},
    {255.0f, 0.0f},
    {1.0f, 0.0f},
}};

constexpr float NegativeLimit = static_cast<float>(-SnapLimit);

bool FollowsSign(VertexSlot slot, std::size_t dimension)
{
    switch (slot) {
    case VertexSlot::Position:
    case VertexSlot::Normal:
    case VertexSlot::Tangent:
        return false;
    case VertexSlot::Color:
    case VertexSlot::UserAttribute0:
    case VertexSlot::UserAttribute1:
    case VertexSlot::UserAttribute2:
        return true;
    case VertexSlot::TextureCoordinate0:
    case VertexSlot::TextureCoordinate1:
    case VertexSlot::TextureCoordinate2:
    case VertexSlot::BoneIndex:
    case VertexSlot::BoneWeight:
        return dimension != 3;
    }
    return false;
}

float LargestMagnitude(std::span<const float> values)
{
    float largest = 0.0f;
    for (const float value : values)
        if (largest < std::fabs(value))
            largest = std::fabs(value);
    return largest;
}

/// Comparisons are false for a number that is none, so it passes through unchanged.
float RoundAndClamp(float value, const QuantizationLimits& limits)
{
    const float rounded = std::trunc(value >= 0.0f ? value + 0.5f : value - 0.5f);
    if (rounded > limits.High)
        return limits.High;
    if (rounded < limits.Low)
        return limits.Low;
    return rounded;
}

} // namespace

QuantizationLimits LimitsOf(QuantizedMode mode)
{
    return Limits[static_cast<std::size_t>(mode)];
}

QuantizedMode FitModeToSign(QuantizedMode wanted, VertexSlot slot, std::size_t dimension,
                            std::span<const float> values)
{
    if (!FollowsSign(slot, dimension))
        return wanted;
    const auto isAtLeast = [](float value) { return value >= NegativeLimit; };
    const auto isBelow = [](float value) { return value < NegativeLimit; };
    if (wanted == QuantizedMode::Byte && std::all_of(values.begin(), values.end(), isAtLeast))
        return QuantizedMode::Ubyte;
    if (wanted == QuantizedMode::Ubyte && std::any_of(values.begin(), values.end(), isBelow))
        return QuantizedMode::Byte;
    return wanted;
}

float QuantizeInPlace(std::span<float> values, QuantizedMode mode)
{
    if (KeepsValues(mode))
        return 1.0f;
    const QuantizationLimits limits = LimitsOf(mode);
    const float magnitude = LargestMagnitude(values);
    const float factor = limits.High / magnitude;
    if (magnitude == 0.0f || !std::isfinite(magnitude) || !std::isfinite(factor))
        return 1.0f;
    for (float& value : values)
        value = RoundAndClamp(value * factor, limits);
    return magnitude / limits.High;
}

} // namespace tq4x
