#include "geometry/BoneListSet.h"

#include "scene/Bone.h"

#include <algorithm>
#include <bit>

namespace tq4x
{
namespace
{

std::uint64_t HashOf(const BoneList& bones)
{
    std::uint64_t hash = bones.size();
    for (const Bone* bone : bones) {
        const auto address = static_cast<std::uint64_t>(std::bit_cast<std::uintptr_t>(bone));
        hash = MixHash(MixHash(hash, static_cast<std::uint32_t>(address)),
                       static_cast<std::uint32_t>(address >> 32));
    }
    return hash;
}

} // namespace

void InsertBone(BoneList& bones, Bone& bone)
{
    const auto isBelow = [](const Bone* left, const std::string& name) { return left->Name < name; };
    const auto place = std::lower_bound(bones.begin(), bones.end(), bone.Name, isBelow);
    // Suffixed names may meet, so the bone can stand behind a namesake.
    for (auto other = place; other != bones.end() && (*other)->Name == bone.Name; ++other)
        if (*other == &bone)
            return;
    bones.insert(place, &bone);
}

bool ContainsAll(const BoneList& whole, const BoneList& part)
{
    return part.size() <= whole.size() && std::all_of(part.begin(), part.end(), [&](const Bone* bone) {
               return std::find(whole.begin(), whole.end(), bone) != whole.end();
           });
}

std::int32_t BoneListSet::FindOrAdd(const BoneList& bones)
{
    if (bones.empty())
        return None;
    const std::int32_t number = m_numbers.FindOrAdd(
        HashOf(bones), Count(), [&](std::int32_t candidate) { return (*this)[candidate] == bones; });
    if (number == Count())
        m_lists.push_back(bones);
    return number;
}

} // namespace tq4x
