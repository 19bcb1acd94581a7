#pragma once

#include "environment/LightSet.h"

#include <string_view>

namespace tq4x
{

class XmlWriter;

/// Writes `AmbientLightQtr` or `FragmentLightQtr` at the writer's level. `magnify` scales the translation.
void WriteLight(const Light& light, XmlWriter& stream, const LookupTableSet& lookupTables, float magnify);

/// Writes the `LightAnimationData` of a finished light at the writer's level.
void WriteLightAnimation(const Light& light, XmlWriter& stream, std::int32_t frameSize, bool isLoop);

/// Writes the lookup tables under `baseName` and ".LightLutset", then `Lights`, sorted by name, both at level
/// 2; nothing for an empty set. Gives the tables unique names first.
void WriteLights(LightSet& set, XmlWriter& stream, std::string_view baseName);

/// Writes `Animations` at level 2 with the lights that move, in list order; nothing if none does. Needs
/// finished lights.
void WriteLightAnimations(const LightSet& set, XmlWriter& stream);

} // namespace tq4x
