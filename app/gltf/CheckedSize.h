#pragma once

#include <cstdint>
#include <limits>
#include <optional>

namespace tq4x::gltf
{

/// Sizes that files claim, added and multiplied without wrapping around: nothing where the result does not
/// fit.
[[nodiscard]] constexpr std::optional<std::uint64_t> AddSizes(std::uint64_t a, std::uint64_t b)
{
    return b > std::numeric_limits<std::uint64_t>::max() - a ? std::nullopt : std::optional(a + b);
}

[[nodiscard]] constexpr std::optional<std::uint64_t> MultiplySizes(std::uint64_t a, std::uint64_t b)
{
    const bool overflows = a != 0 && b > std::numeric_limits<std::uint64_t>::max() / a;
    return overflows ? std::nullopt : std::optional(a * b);
}

} // namespace tq4x::gltf
