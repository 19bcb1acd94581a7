#pragma once

#include "environment/Camera.h"

#include <cstdint>
#include <deque>

namespace tq4x
{

/// The cameras of an export, in the order of collecting. Addresses stay as the set grows.
struct CameraSet
{
    std::deque<Camera> Cameras;
    float Magnify = 1.0f;       ///< of the lengths in the cameras, for their tolerances
    std::int32_t FrameSize = 0; ///< length of the animation in frames, set by finishing
    bool IsLoop = false;        ///< set by finishing

    Camera& Add() { return Cameras.emplace_back(); }
};

} // namespace tq4x
