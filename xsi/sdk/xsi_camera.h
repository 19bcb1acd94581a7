#pragma once

#include <xsi_x3dobject.h>

namespace XSI
{

/// A camera. Parameters: `proj` (0 orthographic, 1 perspective), `fov` (degrees), `fovtype` (0 vertical,
/// 1 horizontal), `aspect`, `near`, `far`, `orthoheight`, `projplanewidth`, `projplaneheight`.
class Camera : public X3DObject
{
public:
    Camera() = default;

    Camera(const CRef& ref) : X3DObject(ref.As(siCameraID)) {}
};

} // namespace XSI
