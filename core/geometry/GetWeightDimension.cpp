#include "geometry/GetWeightDimension.h"

#include <algorithm>

namespace tq4x
{
namespace
{

bool HasComponent(std::span<const Vector4> tuples, float Vector4::*component)
{
    return std::any_of(tuples.begin(), tuples.end(),
                       [&](const Vector4& tuple) { return tuple.*component != 0.0f; });
}

} // namespace

std::size_t LargestBoneTable(const SeparateDataShape& shape)
{
    std::size_t largest = 0;
    for (const PrimitiveSet& set : shape.PrimitiveSets)
        largest = std::max(largest, set.BoneIndexTable.size());
    return largest;
}

std::int32_t GetWeightDimension(const SeparateDataShape& shape, std::size_t maxTableSize,
                                std::span<const Vector4> weightTuples)
{
    if (!shape.SkinWeights)
        return 1;
    if (maxTableSize < 3)
        return static_cast<std::int32_t>(std::max<std::size_t>(maxTableSize, 1));
    if (HasComponent(weightTuples, &Vector4::W))
        return 4;
    return HasComponent(weightTuples, &Vector4::Z) ? 3 : 2;
}

} // namespace tq4x
