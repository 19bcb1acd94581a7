#pragma once

#include <xsi_scene.h>
#include <xsi_sceneitem.h>

namespace XSI
{

/// The project. Its property `Play Control` has the frame window: `GlobalIn`, `GlobalOut`, `In`, `Out`.
class Project : public SceneItem
{
public:
    Project() = default;

    Project(const CRef& ref) : SceneItem(ref.As(siProjectID)) {}

    Scene GetActiveScene() const;
};

} // namespace XSI
