#pragma once

#include <xsi_geometry.h>
#include <xsi_sceneitem.h>

namespace XSI
{

/// What gives a 3D object its shape; also the texture projection of a coordinate set, which has no geometry.
class Primitive : public SceneItem
{
public:
    Primitive() = default;

    Primitive(const CRef& ref) : SceneItem(ref.As(siPrimitiveID)) {}

    Geometry GetGeometry(double time = CurrentTime) const;
};

} // namespace XSI
