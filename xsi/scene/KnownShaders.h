#pragma once

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
    std::span<const ShaderPort> Ports;
};

/// The kind of this ProgID; null if it is not known.
const KnownShader* FindKnownShader(std::string_view progId);

} // namespace XSI::Host
