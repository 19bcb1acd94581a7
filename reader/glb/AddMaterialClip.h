#pragma once

#include "glb/AddMaterials.h"
#include "glb/ClipBuilder.h"

namespace tq4x::reader
{

/// Lets colours and texture transforms of materials move as an animation says. What has no place in glTF,
/// such as changing pictures, is told.
void AddMaterialClip(const MaterialAnimation& animation, const MaterialTable& materials, ClipBuilder& clip,
                     GlbScene& scene);

} // namespace tq4x::reader
