#include "geometry/MergePrimitiveSets.h"

#include "geometry/BoneBits.h"
#include "geometry/BuildPrimitiveSets.h"
#include "geometry/OrderPrimitiveSets.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

namespace tq4x
{
namespace
{

/// A pair of sets is worth merging from this score on.
constexpr std::int64_t LowestScore = 1;
constexpr std::int64_t NoScore = -1;

/// Greedy merging of the best pair. The rule sorts all sets by descending palette size, stably, before each
/// choice. A set's place among them is a key: the size, then a sequence number. A set that grows goes behind
/// all of its new size, so it takes the next number; nothing else ever moves.
///
/// Each set remembers its best partner among the sets behind it. When that partner grows or goes, what is
/// remembered is still the most that the set can reach, so that it is looked for again only when it would be
/// chosen: all sets are seldom compared anew, and nothing is stored per pair.
class SetMerger
{
public:
    SetMerger(std::vector<PrimitiveSet> sets, std::int64_t capacity) : m_capacity(capacity)
    {
        for (PrimitiveSet& set : sets) {
            Member member;
            member.Set = std::move(set);
            member.Bits = m_numbering.BitsOf(member.Set.Palette);
            member.Sequence = m_nextSequence++;
            m_members.push_back(std::move(member));
        }
        for (std::size_t i = 0; i < m_members.size(); ++i)
            FindPartner(i);
    }

    void MergeAll()
    {
        while (const std::optional<std::size_t> best = FindBest())
            Merge(*best, m_members[*best].Partner);
    }

    /// The sets that are left, by descending palette size.
    std::vector<PrimitiveSet> TakeSets()
    {
        std::vector<std::size_t> order;
        for (std::size_t i = 0; i < m_members.size(); ++i)
            if (m_members[i].IsAlive)
                order.push_back(i);
        std::sort(order.begin(), order.end(),
                  [&](std::size_t left, std::size_t right) { return StandsBefore(left, right); });
        std::vector<PrimitiveSet> sets;
        for (const std::size_t i : order)
            sets.push_back(std::move(m_members[i].Set));
        return sets;
    }

private:
    struct Member
    {
        PrimitiveSet Set;
        BoneBits Bits;
        std::int64_t Sequence = 0;
        bool IsAlive = true;
        std::int64_t Score = NoScore; ///< with the partner; the most that is possible if that one is outdated
        std::size_t Partner = 0;      ///< valid with a score
        bool IsOutdated = false;
    };

    std::int64_t SizeOf(std::size_t i) const
    {
        return static_cast<std::int64_t>(m_members[i].Set.Palette.size());
    }

    bool StandsBefore(std::size_t left, std::size_t right) const
    {
        return SizeOf(left) != SizeOf(right) ? SizeOf(left) > SizeOf(right)
                                             : m_members[left].Sequence < m_members[right].Sequence;
    }

    std::int64_t ScoreOf(std::size_t i, std::size_t j) const
    {
        const std::int64_t shared = CountShared(m_members[i].Bits, m_members[j].Bits);
        const std::int64_t together = SizeOf(i) + SizeOf(j) - shared;
        if (together > m_capacity)
            return NoScore;
        const std::int64_t room = shared - together + m_capacity + 1;
        return (room * 256 + shared) * 256 + std::max(SizeOf(i), SizeOf(j));
    }

    /// Takes j, which stands behind i, as the partner of i if it is better than the present one.
    void Consider(std::size_t i, std::size_t j)
    {
        Member& member = m_members[i];
        const std::int64_t score = ScoreOf(i, j);
        if (score < LowestScore || score < member.Score)
            return;
        if (score == member.Score && (member.IsOutdated || !StandsBefore(j, member.Partner)))
            return;
        member.Score = score;
        member.Partner = j;
        member.IsOutdated = false;
    }

    void FindPartner(std::size_t i)
    {
        m_members[i].Score = NoScore;
        m_members[i].IsOutdated = false;
        for (std::size_t j = 0; j < m_members.size(); ++j)
            if (j != i && m_members[j].IsAlive && StandsBefore(i, j))
                Consider(i, j);
    }

    bool IsBetter(std::size_t i, std::size_t other) const
    {
        return m_members[i].Score != m_members[other].Score ? m_members[i].Score > m_members[other].Score
                                                            : StandsBefore(i, other);
    }

    /// The first member of the best pair; nothing if no pair is worth merging.
    std::optional<std::size_t> FindBest()
    {
        while (true) {
            std::optional<std::size_t> best;
            for (std::size_t i = 0; i < m_members.size(); ++i)
                if (m_members[i].IsAlive && m_members[i].Score >= LowestScore &&
                    (!best || IsBetter(i, *best)))
                    best = i;
            if (!best || !m_members[*best].IsOutdated)
                return best;
            FindPartner(*best);
        }
    }

    void Merge(std::size_t i, std::size_t j)
    {
        Absorb(m_members[i], m_members[j]);
        for (std::size_t k = 0; k < m_members.size(); ++k) {
            Member& member = m_members[k];
            if (k == i || !member.IsAlive)
                continue;
            if (member.Score >= LowestScore && (member.Partner == i || member.Partner == j))
                member.IsOutdated = true;
            if (StandsBefore(k, i))
                Consider(k, i);
        }
        FindPartner(i);
    }

    void Absorb(Member& member, Member& other)
    {
        std::vector<Polygon>& polygons = member.Set.Polygons;
        polygons.insert(polygons.end(), other.Set.Polygons.begin(), other.Set.Polygons.end());
        const std::size_t size = member.Set.Palette.size();
        for (Bone* bone : other.Set.Palette)
            InsertBone(member.Set.Palette, *bone);
        AddBones(member.Bits, other.Bits);
        if (member.Set.Palette.size() > size)
            member.Sequence = m_nextSequence++;
        other.Set = {};
        other.IsAlive = false;
    }

    std::int64_t m_capacity;
    BoneNumbering m_numbering;
    std::vector<Member> m_members;
    std::int64_t m_nextSequence = 0;
};

} // namespace

void MergePrimitiveSets(SeparateDataShape& shape)
{
    SetMerger merger(std::move(shape.PrimitiveSets), shape.BoneCapacity);
    merger.MergeAll();
    shape.PrimitiveSets = merger.TakeSets();
    OrderPrimitiveSets(shape);
    for (PrimitiveSet& set : shape.PrimitiveSets)
        SortPolygons(set.Polygons);
}

} // namespace tq4x
