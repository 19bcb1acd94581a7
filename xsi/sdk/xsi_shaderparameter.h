#pragma once

#include <xsi_parameter.h>

namespace XSI
{

/// A parameter of a shader: an input port or an output.
class ShaderParameter : public Parameter
{
public:
    ShaderParameter() = default;

    ShaderParameter(const CRef& ref) : Parameter(ref.As(siShaderParameterID)) {}
};

} // namespace XSI
