#pragma once

#include <xsi_sceneitem.h>

namespace XSI
{

class Material;

/// A group of components of a geometry.
class Cluster : public SceneItem
{
public:
    Cluster() = default;

    Cluster(const CRef& ref) : SceneItem(ref.As(siClusterID)) {}

    /// The cluster's own material; invalid if it has none.
    Material GetMaterial() const;
};

} // namespace XSI
