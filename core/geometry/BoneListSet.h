#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace tq4x
{

struct Bone;

/// Bones in ascending byte order of `Name`, each at most once.
using BoneList = std::vector<Bone*>;

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
    std::unordered_multimap<std::size_t, std::int32_t> m_numbers; ///< by hash of the list; not the empty one
};

} // namespace tq4x
