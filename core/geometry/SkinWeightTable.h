#pragma once

#include <cstdint>
#include <vector>

namespace tq4x
{

struct Bone;

/// The share of one bone in a vertex.
struct SkinInfluence
{
    tq4x::Bone* Bone = nullptr;
    std::int32_t Percentage = 0; ///< 0 to 100; zero and negative values may stand and count for nothing

    bool operator==(const SkinInfluence&) const = default;
};

/// The influences of one host vertex.
using SkinWeightEntry = std::vector<SkinInfluence>;

/// One entry for each host vertex.
using SkinWeightTable = std::vector<SkinWeightEntry>;

} // namespace tq4x
