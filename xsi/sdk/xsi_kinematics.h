#pragma once

#include <xsi_kinematicstate.h>
#include <xsi_property.h>

namespace XSI
{

/// All that moves a 3D object.
class Kinematics : public Property
{
public:
    Kinematics() = default;

    Kinematics(const CRef& ref) : Property(ref.As(siKinematicsID)) {}

    KinematicState GetLocal() const;
    KinematicState GetGlobal() const;

    /// The constraints on the object, in the order in which they were applied.
    CRefArray GetConstraints() const;
};

} // namespace XSI
