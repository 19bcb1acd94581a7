#include "geometry/BuildPrimitiveSets.h"

#include "geometry/BoneBits.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace tq4x
{
namespace
{

bool StandsBefore(const Polygon& left, const Polygon& right)
{
    return left.CornerCount != right.CornerCount ? left.CornerCount > right.CornerCount
                                                 : left.Mode > right.Mode;
}

/// Finds the set for a list of bones. A palette is complete with its first polygon, since a polygon joins
/// only a set that holds all its bones: the answer for a list of bones never changes.
class SetFinder
{
public:
    /// The first set that holds all the bones; nothing if there is none.
    std::optional<std::size_t> FindSet(const BoneList& bones)
    {
        if (m_palettes.empty())
            return std::nullopt;
        if (bones.empty())
            return 0;
        const BoneBits bits = m_numbering.BitsOf(bones);
        for (const std::size_t set : ShortestList(bones))
            if (ContainsAll(m_palettes[set], bits))
                return set;
        return std::nullopt;
    }

    /// Adds a set with this palette; its number.
    std::size_t AddSet(const BoneList& palette)
    {
        const std::size_t set = m_palettes.size();
        m_palettes.push_back(m_numbering.BitsOf(palette));
        for (const Bone* bone : palette)
            SetsOf(bone).push_back(set);
        return set;
    }

private:
    /// The sets, ascending, that hold the bone.
    std::vector<std::size_t>& SetsOf(const Bone* bone)
    {
        const auto number = static_cast<std::size_t>(m_numbering.NumberOf(bone));
        if (number >= m_sets.size())
            m_sets.resize(number + 1);
        return m_sets[number];
    }

    std::vector<std::size_t> ShortestList(const BoneList& bones)
    {
        const Bone* rarest = *std::min_element(bones.begin(), bones.end(), [&](auto left, auto right) {
            return SetsOf(left).size() < SetsOf(right).size();
        });
        return SetsOf(rarest);
    }

    BoneNumbering m_numbering;
    std::vector<BoneBits> m_palettes;             ///< by set
    std::vector<std::vector<std::size_t>> m_sets; ///< by bone
};

} // namespace

void SortPolygons(std::vector<Polygon>& polygons)
{
    if (!std::is_sorted(polygons.begin(), polygons.end(), StandsBefore))
        std::stable_sort(polygons.begin(), polygons.end(), StandsBefore);
}

GeometryResult BuildPrimitiveSets(SeparateDataShape& shape)
{
    SortPolygons(shape.Polygons);
    SetFinder finder;
    std::vector<std::optional<std::size_t>> setOfList(static_cast<std::size_t>(shape.BoneLists.Count()));
    for (const Polygon& polygon : shape.Polygons) {
        const BoneList& bones = shape.BoneLists[polygon.Bones];
        std::optional<std::size_t>& set = setOfList[static_cast<std::size_t>(polygon.Bones)];
        if (!set)
            set = finder.FindSet(bones);
        if (!set) {
            set = finder.AddSet(bones);
            shape.PrimitiveSets.push_back({bones, {}, {}});
        }
        shape.PrimitiveSets[*set].Polygons.push_back(polygon);
    }
    shape.Polygons = {};
    return {};
}

} // namespace tq4x
