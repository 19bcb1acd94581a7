#pragma once

#include <set>
#include <string>

#include "ReadStage.h"
#include "glb/ClipBuilder.h"

namespace tq4x::reader
{

/// Names of cameras and lights that stand in the scene already: an environment file repeats those of others.
struct StageNames
{
    std::set<std::string> Cameras;
    std::set<std::string> Lights;
};

/// Adds cameras and what moves them.
void AddCameras(const Stage& stage, StageNames& known, ClipBuilder& clip, GlbScene& scene);

/// Adds lights and what moves them. A light that is off and stays off is left out, and so are ambient lights,
/// both with a warning unless the ambient light is black.
void AddLights(const Stage& stage, StageNames& known, ClipBuilder& clip, GlbScene& scene);

} // namespace tq4x::reader
