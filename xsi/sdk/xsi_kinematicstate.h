#pragma once

#include <xsi_property.h>
#include <xsi_transformation.h>

namespace XSI
{

/// The local or the global transformation of a 3D object.
class KinematicState : public Property
{
public:
    KinematicState() = default;

    KinematicState(const CRef& ref) : Property(ref.As(siKinematicStateID)) {}

    /// The transformation at a frame: of a local state relative to the parent object, of a global one
    /// relative to the scene.
    MATH::CTransformation GetTransform(double time = CurrentTime) const;

    /// Sets the transformation as a constant. A global one is turned into the local one that gives it.
    CStatus PutTransform(const MATH::CTransformation& transform, double time = CurrentTime);
};

} // namespace XSI
