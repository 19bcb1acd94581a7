#pragma once

#include "animation/AnimationCurve.h"
#include "math/Vector.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tq4x
{

/// What turns a camera.
enum class CameraViewMode : std::int32_t
{
    Rotate = 0,       ///< its own rotation
    AimTarget = 1,    ///< a target, and a twist about the view axis
    LookAtTarget = 2, ///< a target, and an upward vector
};

enum class CameraProjectionMode : std::int32_t
{
    Perspective = 0,
    Ortho = 1,
};

/// Places in `Camera::Curves`: the first of three for the vectors, the curve itself for the others.
namespace CameraCurve
{
inline constexpr std::size_t Scale = 0;
inline constexpr std::size_t Rotate = 3; ///< degrees
inline constexpr std::size_t Translate = 6;
inline constexpr std::size_t TargetPosition = 9;
inline constexpr std::size_t UpwardVector = 12;
inline constexpr std::size_t Twist = 15; ///< degrees
inline constexpr std::size_t Near = 16;
inline constexpr std::size_t Far = 17;
inline constexpr std::size_t AspectRatio = 18;
inline constexpr std::size_t Fovy = 19; ///< degrees
inline constexpr std::size_t Height = 20;
inline constexpr std::size_t Count = 21;
} // namespace CameraCurve

/// One exported camera. Static values are those at the first frame of the export; lengths, samples included,
/// are multiplied by the magnification already; angles are degrees.
struct Camera
{
    std::string Name;            ///< unique among the nodes
    bool IsBranchVisible = true; ///< the camera and all above it are visible
    CameraViewMode ViewMode = CameraViewMode::Rotate;
    Vector3 Scale{1.0f, 1.0f, 1.0f};
    Vector3 Rotate; ///< filled for `CameraViewMode::Rotate` only
    Vector3 Translate;
    bool IsInheritingRotate = false;
    bool IsInheritingTargetRotate = false;
    bool IsInheritingTargetTranslate = false;
    bool IsInheritingUpRotate = false;
    Vector3 TargetPosition; ///< filled where there is a target
    Vector3 UpwardVector;   ///< filled for `CameraViewMode::LookAtTarget` only
    float Twist = 0.0f;     ///< filled for `CameraViewMode::AimTarget` only
    CameraProjectionMode ProjectionMode = CameraProjectionMode::Perspective;
    float Near = 0.0f;
    float Far = 0.0f;
    float AspectRatio = 0.0f; ///< width over height
    float Fovy = 0.0f;        ///< vertical field of view
    float Height = 0.0f;      ///< of an orthographic view
    float CenterX = 0.0f;
    float CenterY = 0.0f;
    std::array<AnimationCurve, CameraCurve::Count> Curves;
    bool IsScaleAnimated = false;
    bool IsRotateAnimated = false;
    bool IsTranslateAnimated = false;
    bool IsTargetAnimated = false;
    bool IsUpwardAnimated = false;
};

} // namespace tq4x
