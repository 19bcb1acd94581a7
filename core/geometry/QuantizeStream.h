#pragma once

#include "geometry/VertexAttributePool.h"

#include <cstddef>
#include <span>

namespace tq4x
{

/// Largest and smallest integer of a storage.
struct QuantizationLimits
{
    float High = 1.0f;
    float Low = 0.0f;
};

/// Limits of the integer modes. `Float` and `Auto` keep values as they are and have none: { 1, 0 }.
QuantizationLimits LimitsOf(QuantizedMode mode);

/// True if values of this mode are written as they are.
constexpr bool KeepsValues(QuantizedMode mode)
{
    return mode == QuantizedMode::Float || mode == QuantizedMode::Auto;
}

/// The storage that fits the sign of the values: `Byte` becomes `Ubyte` where no component is below -1e-6,
/// and `Ubyte` becomes `Byte` where one is. Positions, normals and tangents keep the wanted mode, and so do
/// values of three components that are neither colours nor user attributes. A component that is not a number
/// is neither below the limit nor at it, so with one `Byte` stays `Byte`.
QuantizedMode FitModeToSign(QuantizedMode wanted, VertexSlot slot, std::size_t dimension,
                            std::span<const float> values);

/// Turns the values of one stream into integers of the mode and answers the scale that takes them back, the
/// same for all components: the largest magnitude over the mode's high limit. Rounding is half away from
/// zero, then the limits hold. Values stay, and the scale is 1, with `Float` and `Auto`, where all values are
/// 0, and where the magnitude or its inverse leaves single precision. Components that are not numbers stay.
///
/// Example: { -1, 0.5, 2 } as `Byte` is { -64, 32, 127 } with the scale 2 / 127.
float QuantizeInPlace(std::span<float> values, QuantizedMode mode);

} // namespace tq4x
