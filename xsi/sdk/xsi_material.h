#pragma once

#include <xsi_sceneitem.h>

namespace XSI
{

class MaterialLibrary;

/// A material. Its parameters are the ports `surface`, `normal`, ... to which shaders are connected.
class Material : public SceneItem
{
public:
    Material() = default;

    Material(const CRef& ref) : SceneItem(ref.As(siMaterialID)) {}

    MaterialLibrary GetLibrary() const;

    /// The objects and clusters that use the material, in the order in which they took it.
    CRefArray GetUsedBy() const;
};

} // namespace XSI
