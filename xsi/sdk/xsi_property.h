#pragma once

#include <xsi_sceneitem.h>

namespace XSI
{

/// A set of parameters that hangs on a scene object. Its parent is that object.
class Property : public SceneItem
{
public:
    Property() = default;

    Property(const CRef& ref) : SceneItem(ref.As(siPropertyID)) {}
};

} // namespace XSI
