#pragma once

#include "geometry/Mesh.h"

#include <memory>

namespace tq4x
{

/// A copy of the shape that refers to another weight table; none for a copy in an unskinned mesh.
std::unique_ptr<SeparateDataShape> CloneShape(const SeparateDataShape& shape, const SkinWeightTable* table);

/// A copy of the mesh with shapes and a weight table of its own. The influences refer to the same bones.
std::unique_ptr<Mesh> CloneMesh(const Mesh& mesh);

} // namespace tq4x
