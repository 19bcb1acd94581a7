#pragma once

#include <cstdint>
#include <string_view>

namespace tq4x
{

/// Answer of an operation on geometry that can fail: status 0 is fine, 1 comes with its reason.
struct [[nodiscard]] GeometryResult
{
    std::int32_t Status = 0;
    std::string_view Message; ///< text of the program's lifetime; empty when fine

    bool operator==(const GeometryResult&) const = default;
};

} // namespace tq4x
