#pragma once

#include "environment/Light.h"

#include <cstdint>
#include <deque>

namespace tq4x
{

/// The lights of an export, in the order of collecting, and the tables of their cones. Addresses stay as the
/// set grows.
struct LightSet
{
    std::deque<Light> Lights;
    LookupTableSet LookupTables;
    float Magnify = 1.0f;       ///< for the static translations when they are written
    std::int32_t FrameSize = 0; ///< length of the animation in frames, set by finishing
    bool IsLoop = false;        ///< set by finishing

    Light& Add() { return Lights.emplace_back(); }
};

} // namespace tq4x
