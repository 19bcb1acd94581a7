#pragma once

#include "geometry/Mesh.h"

#include <string>
#include <vector>

namespace tq4x
{

/// How far a shape has come; each stage holds what the stages before it hold.
enum class ShapeStage
{
    Filled,    ///< indices in range, every corner in one polygon, bones of polygons up to date, weights sum
    Welded,    ///< and the values of each list are distinct
    Compacted, ///< and each value is used
    Finalized, ///< and all polygons are in sets whose palettes and tables fit
};

/// What is wrong with a shape, a sentence each; empty for a sound one. For tests and debugging.
std::vector<std::string> CheckShape(const SeparateDataShape& shape, ShapeStage stage);

/// The same for all shapes of a mesh, and for what they share with it.
std::vector<std::string> CheckMesh(const Mesh& mesh, ShapeStage stage);

} // namespace tq4x
