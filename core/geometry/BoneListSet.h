#pragma once

#include "geometry/HashIndex.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tq4x
{

struct Bone;

/// Bones in ascending byte order of `Name`, each at most once.
using BoneList = std::vector<Bone*>;

/// Inserts a bone at its place in the order, before others of the same name; a bone that is in the list
/// already stays where it is.
void InsertBone(BoneList& bones, Bone& bone);

/// True if every bone of `part` is in `whole`.
bool ContainsAll(const BoneList& whole, const BoneList& part);

/// The distinct bone lists of a shape's polygons, numbered in order of their first coming. Number 0 is the
/// empty list.
class BoneListSet
{
public:
    static constexpr std::int32_t None = 0;

    /// The number of an equal list, added if there is none.
    std::int32_t FindOrAdd(const BoneList& bones);

    const BoneList& operator[](std::int32_t number) const
    {
        return m_lists[static_cast<std::size_t>(number)];
    }

    std::int32_t Count() const { return static_cast<std::int32_t>(m_lists.size()); }

private:
    std::vector<BoneList> m_lists{BoneList{}};
    HashIndex m_numbers; ///< of all lists but the empty one
};

} // namespace tq4x
