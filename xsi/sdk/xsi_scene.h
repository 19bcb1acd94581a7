#pragma once

#include <xsi_model.h>
#include <xsi_projectitem.h>

namespace XSI
{

/// A scene. Its parameter `FileName` is the path of its file, empty for one that was never saved.
class Scene : public ProjectItem
{
public:
    Scene() = default;

    Scene(const CRef& ref) : ProjectItem(ref.As(siSceneID)) {}

    Model GetRoot() const;

    CRefArray GetMaterialLibraries() const;
};

} // namespace XSI
