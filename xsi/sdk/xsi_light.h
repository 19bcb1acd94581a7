#pragma once

#include <xsi_x3dobject.h>

namespace XSI
{

/// A light. Parameters: `Type` (0 point, 1 infinite, 2 spot), `LightArea`, `LightCone` (degrees),
/// `DiffuseContribution`, `SpecularContribution`.
class Light : public X3DObject
{
public:
    Light() = default;

    Light(const CRef& ref) : X3DObject(ref.As(siLightID)) {}

    /// The shaders of the light; the first one gives its colour.
    CRefArray GetShaders() const;
};

} // namespace XSI
