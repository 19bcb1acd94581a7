#pragma once

#include <array>
#include <string>
#include <vector>

namespace tq4x::reader
{

using Vector3 = std::array<float, 3>; ///< X, Y, Z
using Color = std::array<float, 4>;   ///< R, G, B, A

/// Applied as scale, then rotation about X, then Y, then Z, then translation.
struct Transform
{
    Vector3 Scale = {1, 1, 1};
    Vector3 Rotate = {0, 0, 0}; ///< radians
    Vector3 Translate = {0, 0, 0};
};

/// A named list of values that the author of the scene attached. One of the three lists is in use.
struct UserDataItem
{
    enum class ValueKind
    {
        String,
        Integer,
        Float,
    };

    std::string Key;
    ValueKind Kind = ValueKind::String;
    std::vector<std::string> Strings;
    std::vector<int> Integers;
    std::vector<float> Floats;
};

} // namespace tq4x::reader
