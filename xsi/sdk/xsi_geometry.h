#pragma once

#include <xsi_projectitem.h>

namespace XSI
{

/// The points and surfaces of a primitive.
class Geometry : public ProjectItem
{
public:
    Geometry() = default;

    Geometry(const CRef& ref) : ProjectItem(ref.As(siGeometryID)) {}

    /// The clusters on the geometry, in order.
    CRefArray GetClusters() const;
};

} // namespace XSI
