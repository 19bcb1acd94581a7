#pragma once

#include "geometry/Mesh.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace tq4x
{

/// The number of entries of the largest `BoneIndexTable` of a shape.
std::size_t LargestBoneTable(const SeparateDataShape& shape);

/// The number of components that the bone streams write: 1 for an unskinned shape; with tables of less than
/// three entries, their largest size, at least 1; else the last component that is not zero in all tuples, at
/// least 2. A NaN is not zero.
std::int32_t GetWeightDimension(const SeparateDataShape& shape, std::size_t maxTableSize,
                                std::span<const Vector4> weightTuples);

} // namespace tq4x
