#pragma once

#include <optional>

#include "ReadModel.h"
#include "glb/GlbWriter.h"

namespace tq4x::reader
{

/// A shape of one set alone, with the vertices that it draws, in their order. Another set may read the slots
/// of the same vertex differently, and vertices that nothing draws would stand where nothing is.
[[nodiscard]] Shape PickSet(const Shape& shape, const PrimitiveSet& set);

/// The vertex attributes of a shape, apart from what moves it: positions, normals and tangents of length 1,
/// the colour, at least `leastCoordinates` sets of texture coordinates (those that the shape lacks are zeros,
/// v points downwards), user attributes as `_TQ4XUSER0` to 2. The shape must have positions.
[[nodiscard]] Json BuildAttributes(const Shape& shape, int leastCoordinates, GlbWriter& writer);

/// `JOINTS_0` and `WEIGHTS_0` of a shape's vertices as a set moves them. A joint is a bone's index. Weights
/// sum to 1.
void AddInfluences(const Shape& shape, const PrimitiveSet& set, std::size_t boneCount, Json& attributes,
                   GlbWriter& writer);

/// The triangles of a set as an accessor of indices; those that use a vertex twice show nothing and are left
/// out. Nothing if none remain.
[[nodiscard]] std::optional<int> AddTriangles(const PrimitiveSet& set, GlbWriter& writer);

} // namespace tq4x::reader
