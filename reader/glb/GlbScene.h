#pragma once

#include <span>
#include <string>
#include <vector>

#include "ReadValues.h"
#include "glb/GlbWriter.h"

namespace tq4x::reader
{

/// What the parts of a conversion share.
struct GlbScene
{
    GlbWriter Writer;
    std::vector<int> Roots; ///< nodes of the scene's first level
    std::vector<std::string> Warnings;
    std::size_t SamplesLeft = std::size_t{1} << 26; ///< numbers that animations may still take
};

/// `{"translation": ..., "rotation": ..., "scale": ...}` without what is the identity, added to a node.
void SetTransform(Json& node, const Transform& transform);

/// A list of numbers, printed as short as a float can be.
[[nodiscard]] Json NumberList(std::span<const float> values);

} // namespace tq4x::reader
