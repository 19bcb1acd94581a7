#pragma once

#include <xsi_property.h>
#include <xsi_transformation.h>

namespace XSI
{

/// The pose of an object at the moment when a skin was bound to it, relative to the scene.
class StaticKinematicState : public Property
{
public:
    StaticKinematicState() = default;

    StaticKinematicState(const CRef& ref) : Property(ref.As(siStaticKinematicStateID)) {}

    /// The stored transformation; it does not depend on the frame.
    MATH::CTransformation GetTransform(double time = CurrentTime) const;
};

} // namespace XSI
