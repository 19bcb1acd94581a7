#pragma once

#include "geometry/Mesh.h"

#include <array>
#include <cstdint>
#include <vector>

namespace tq4x
{

/// What became of the lists that several shapes share, so that each is welded once. Keeps its lists alive.
struct WeldCache
{
    struct Entry
    {
        AttributeValues Before;
        AttributeValues After;
        std::vector<std::int32_t> Map; ///< old number to new number; empty if no value was dropped
    };

    std::array<std::vector<Entry>, VertexSlotCount> Entries;
};

/// Reduces each value list of the shape's pool to its distinct values and points the corners at them. Values
/// are compared exactly, component by component: -0 equals 0, and a NaN equals nothing, not even itself. The
/// values that stay keep their bits and stand in order of first appearance in the whole list, used or not.
/// Entries below 0 stay; entries past the list become 0. Linear in the values and corners.
///
/// The values 2, 5, 2, 7, 5 become 2, 5, 7, and the numbers 0, 1, 0, 2, 1.
void WeldPools(SeparateDataShape& shape, WeldCache& cache);

/// The same for a shape on its own.
void WeldPools(SeparateDataShape& shape);

} // namespace tq4x
