#pragma once

#include <xsi_property.h>

namespace XSI
{

class X3DObject;

/// A tie between 3D objects. The model keeps constraints as data: transformations are what the sources say.
class Constraint : public Property
{
public:
    Constraint() = default;

    Constraint(const CRef& ref) : Property(ref.As(siConstraintID)) {}

    X3DObject GetConstrained() const;

    /// The objects that the constrained one follows.
    CRefArray GetConstraining() const;

    /// The object that sets the up direction; invalid if there is none.
    CRef GetUpVectorReference() const;
};

} // namespace XSI
