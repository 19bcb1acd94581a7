#pragma once

#include <array>
#include <span>
#include <string_view>

#include <xsi_value.h>

namespace XSI::Host
{

/// A port of a shader and its value. A colour has the same value in red, green and blue.
struct ShaderPort
{
    enum class Kind
    {
        Color,
        Number,
        Integer,
        Flag,
        Text,
    };

    std::string_view Name;
    Kind Type = Kind::Number;
    double Value = 0.0;
    double Alpha = 1.0;
};

struct KnownShader
{
    std::string_view ProgId;
    bool IsTexture = false;
    std::array<std::span<const ShaderPort>, 4>
        PortGroups; ///< In the order of the ports; the last ones may be empty.
};

/// The kind of this ProgID; null if it is not known.
const KnownShader* FindKnownShader(std::string_view progId);

} // namespace XSI::Host
