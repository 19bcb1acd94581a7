#pragma once

#include <xsi_floatarray.h>
#include <xsi_property.h>

namespace XSI
{

/// Values on the elements of a cluster: colours, coordinates, normals, attributes of the user.
class ClusterProperty : public Property
{
public:
    ClusterProperty() = default;

    ClusterProperty(const CRef& ref) : Property(ref.As(siClusterPropertyID)) {}

    /// Values per element.
    LONG GetValueSize() const;

    /// All values, element by element. Fail, and no values, if they can't be read.
    CStatus GetValues(CFloatArray& values) const;
};

} // namespace XSI
