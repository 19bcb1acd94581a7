#pragma once

#include "environment/CameraSet.h"
#include "environment/LightSet.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tq4x::test
{

using Samples = std::vector<float>;

/// Gives a curve its samples; the other curves of its group stay empty.
template<typename Owner>
void Sample(Owner& owner, std::size_t curve, Samples samples)
{
    owner.Curves[curve].Samples = std::move(samples);
}

/// Gives each curve of a group constant samples: what a collector leaves where nothing moves.
template<typename Owner>
void Rest(Owner& owner, std::size_t first, const std::vector<float>& values, std::size_t count = 3)
{
    for (std::size_t i = 0; i < values.size(); ++i)
        owner.Curves[first + i].Samples = Samples(count, values[i]);
}

/// A camera at (1, 2, 3) with all static values of its own, which nothing moves.
inline Camera MakeCamera(const std::string& name, CameraViewMode viewMode, CameraProjectionMode projection)
{
    Camera camera;
    camera.Name = name;
    camera.ViewMode = viewMode;
    camera.ProjectionMode = projection;
    camera.Translate = {1.0f, 2.0f, 3.0f};
    camera.Near = 0.1f;
    camera.Far = 1000.0f;
    camera.AspectRatio = 1.5f;
    if (projection == CameraProjectionMode::Ortho)
        camera.Height = 20.0f;
    else
        camera.Fovy = 60.0f;
    if (viewMode == CameraViewMode::Rotate)
        camera.Rotate = {90.0f, -45.0f, 0.0f};
    else
        camera.TargetPosition = {4.0f, 5.0f, 6.0f};
    if (viewMode == CameraViewMode::AimTarget)
        camera.Twist = 30.0f;
    if (viewMode == CameraViewMode::LookAtTarget)
        camera.UpwardVector = {0.0f, 1.0f, 0.0f};
    return camera;
}

inline Light MakeLight(const std::string& name, LightKind kind)
{
    Light light;
    light.Name = name;
    light.LightKind = kind;
    light.Translate = {1.0f, 2.0f, 3.0f};
    if (kind == LightKind::Ambient) {
        light.Ambient = {0.25f, 0.5f, 0.75f, 1.0f};
        return light;
    }
    light.Diffuse = {1.0f, 0.5f, 0.25f, 0.8f};
    light.Specular0 = light.Specular1 = {0.5f, 0.5f, 0.5f, 0.8f};
    light.Direction = {0.0f, -1.0f, 0.0f};
    return light;
}

} // namespace tq4x::test
