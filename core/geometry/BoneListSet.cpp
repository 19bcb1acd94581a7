#include "geometry/BoneListSet.h"

#include <functional>

namespace tq4x
{
namespace
{

std::size_t HashOf(const BoneList& bones)
{
    std::size_t hash = bones.size();
    for (const Bone* bone : bones)
        hash = hash * 1099511628211u + std::hash<const Bone*>{}(bone);
    return hash;
}

} // namespace

std::int32_t BoneListSet::FindOrAdd(const BoneList& bones)
{
    if (bones.empty())
        return None;
    const std::size_t hash = HashOf(bones);
    const auto [first, last] = m_numbers.equal_range(hash);
    for (auto entry = first; entry != last; ++entry)
        if ((*this)[entry->second] == bones)
            return entry->second;
    const std::int32_t number = Count();
    m_lists.push_back(bones);
    m_numbers.emplace(hash, number);
    return number;
}

} // namespace tq4x
