#pragma once

#include <string>
#include <vector>

#include "ReadAnimation.h"
#include "ReadMaterial.h"
#include "ReadValues.h"

namespace tq4x::reader
{

struct Camera
{
    std::string Name;
    bool IsBranchVisible = true;
    Transform Local;
    std::string ViewMode;    ///< "Rotate", "AimTarget", "LookAtTarget"
    Vector3 ViewRotate = {}; ///< Rotate: radians, about X, then Y, then Z
    Vector3 TargetPosition = {};
    Vector3 UpwardVector = {}; ///< LookAtTarget
    float Twist = 0;           ///< AimTarget, radians
    bool IsOrtho = false;
    float Near = 0;
    float Far = 0;
    float Fovy = 0; ///< perspective: vertical, radians
    float AspectRatio = 1;
    float Height = 0;    ///< ortho
    Vector3 Center = {}; ///< ortho
    long Line = 0;
};

struct CameraAnimation
{
    AnimationHead Head; ///< its name is the camera's
    std::string ViewMode;
    std::string ProjectionMode; ///< "Perspective", "Ortho"
    std::vector<MemberAnimation> Members;
};

struct Light
{
    std::string Name;
    bool IsBranchVisible = true;
    std::string Kind = "Ambient"; ///< "Ambient", "DirectionalLight", "PointLight", "SpotLight"
    Transform Local;
    Color Ambient = {};
    Color Diffuse = {}; ///< alpha is the intensity
    Color Specular0 = {};
    Color Specular1 = {};
    Vector3 Direction = {}; ///< where the light shines
    bool IsDistanceAttenuationEnabled = false;
    float DistanceAttenuationStart = 0;
    float DistanceAttenuationEnd = 0;
    LookupTableSampler Angle; ///< spot lights: brightness over the cosine of the angle
    long Line = 0;
};

struct LightAnimation
{
    AnimationHead Head;    ///< its name is the light's and ".LightAnimation"
    std::string LightKind; ///< "Unused" for an ambient light
    std::string LightType; ///< "Ambient", "Fragment"
    std::vector<MemberAnimation> Members;
};

/// Cameras, lights and what moves them: all of a camera, light or environment file.
struct Stage
{
    std::vector<CameraAnimation> CameraAnimations;
    std::vector<Camera> Cameras;
    std::vector<LightAnimation> LightAnimations;
    LookupTableSet LookupTables; ///< of the lights
    std::vector<Light> Lights;
};

} // namespace tq4x::reader
