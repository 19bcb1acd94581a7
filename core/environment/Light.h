#pragma once

#include "animation/AnimationCurve.h"
#include "material/LookupTable.h"
#include "math/Vector.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tq4x
{

enum class LightKind : std::int32_t
{
    Ambient = 0,
    DirectionalLight = 1,
    PointLight = 2,
    SpotLight = 3,
};

/// Places in `Light::Curves`: the first of three or four.
namespace LightCurve
{
inline constexpr std::size_t Visibility = 0;
inline constexpr std::size_t Scale = 1;
inline constexpr std::size_t Rotate = 4;    ///< degrees
inline constexpr std::size_t Translate = 7; ///< samples are multiplied by the magnification already
inline constexpr std::size_t Ambient = 10;
inline constexpr std::size_t Diffuse = 14;
inline constexpr std::size_t Specular0 = 18;
inline constexpr std::size_t Specular1 = 22;
inline constexpr std::size_t Direction = 26;
inline constexpr std::size_t Count = 29;
} // namespace LightCurve

/// How a light reads its lookup table. The numbers go into the files by the words of the material's samplers,
/// odd as that may look.
struct LightSampler
{
    bool IsAbs = true;
    float Scale = 0.0f;
    std::int32_t Input = 2;
    std::int32_t TableIndex = -1; ///< -1: no table
};

/// One exported light. Static values are those at the first frame of the export. Colours carry the intensity
/// as alpha; it never multiplies them.
struct Light
{
    std::string Name; ///< unique among the nodes
    tq4x::LightKind LightKind = tq4x::LightKind::DirectionalLight;
    bool IsLightEnabled = true; ///< visible at the first frame
    bool IsTwoSideDiffuse = false;
    bool IsDistanceAttenuationEnabled = false;
    float DistanceAttenuationStart = 0.0f;
    float DistanceAttenuationEnd = 1.0f;
    bool IsInheritingDirectionRotate = false;
    Vector3 Scale{1.0f, 1.0f, 1.0f};
    Vector3 Rotate;    ///< degrees
    Vector3 Translate; ///< not yet multiplied by the magnification
    Color Ambient{0.0f, 0.0f, 0.0f, 1.0f};
    Color Diffuse{1.0f, 1.0f, 1.0f, 1.0f};
    Color Specular0{1.0f, 1.0f, 1.0f, 1.0f};
    Color Specular1{1.0f, 1.0f, 1.0f, 1.0f};
    Vector3 Direction{0.0f, 0.0f, 1.0f};
    LightSampler DistanceSampler;
    LightSampler AngleSampler;
    std::array<AnimationCurve, LightCurve::Count> Curves;
    bool IsScaleAnimated = false;
    bool IsRotateAnimated = false;
    bool IsTranslateAnimated = false;
    bool IsAmbientAnimated = false;
    bool IsDiffuseAnimated = false;
    bool IsSpecular0Animated = false;
    bool IsSpecular1Animated = false;
    bool IsDirectionAnimated = false;
};

/// Gives a spot light the table of its cone, which lights with equal cones share. Angles in degrees: the
/// whole cone, and the width of its soft rim on each side; a rim wider than half the cone reaches to the
/// axis.
void SetSpotCone(Light& light, float cone, float spread, LookupTableSet& lookupTables);

} // namespace tq4x
