#pragma once

#include "geometry/BoneListSet.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace tq4x
{

/// A set of bones as bits by number. Sets that are compared may differ in length: what is missing is not in.
using BoneBits = std::vector<std::uint64_t>;

/// Numbers bones in order of their first coming, so that their sets can be kept as bits.
class BoneNumbering
{
public:
    std::int32_t NumberOf(const Bone* bone);

    BoneBits BitsOf(const BoneList& bones);

private:
    std::unordered_map<const Bone*, std::int32_t> m_numbers;
};

/// True if every bone of `part` is in `whole`.
bool ContainsAll(const BoneBits& whole, const BoneBits& part);

} // namespace tq4x
