#include "geometry/MergePrimitiveSets.h"

#include "geometry/BoneBits.h"
#include "geometry/BuildPrimitiveSets.h"
#include "geometry/OrderPrimitiveSets.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <optional>
#include <span>
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
    SetMerger(std::vector<PrimitiveSet> sets, std::int64_t capacity)
        : m_capacity(capacity),
          m_sets(std::move(sets)),
          m_places(m_sets.size()),
          m_choices(m_sets.size()),
          m_alive(m_sets.size())
    {
        std::iota(m_alive.begin(), m_alive.end(), std::size_t{0});
        NumberBones();
        for (std::size_t i = 0; i < m_sets.size(); ++i)
            m_places[i] = {SizeOf(m_sets[i]), m_nextSequence++};
        for (std::size_t i = 0; i < m_sets.size(); ++i)
            ChooseAnew(i);
    }

    void MergeAll()
    {
        while (const std::optional<std::size_t> best = FindBest())
            Merge(*best, m_choices[*best].Partner);
    }

    /// The sets that are left, by descending palette size.
    std::vector<PrimitiveSet> TakeSets()
    {
        std::sort(m_alive.begin(), m_alive.end(),
                  [&](std::size_t left, std::size_t right) { return StandsBefore(left, right); });
        std::vector<PrimitiveSet> sets;
        for (const std::size_t i : m_alive)
            sets.push_back(std::move(m_sets[i]));
        return sets;
    }

private:
    /// Where a set stands among the others.
    struct Place
    {
        std::int64_t Size = 0;
        std::int64_t Sequence = 0;
    };

    struct Choice
    {
        std::int64_t Score = NoScore; ///< with the partner; the most that is possible if that one is outdated
        std::size_t Partner = 0;      ///< valid with a score
        bool IsOutdated = false;
    };

    static std::int64_t SizeOf(const PrimitiveSet& set) { return std::ssize(set.Palette); }

    void NumberBones()
    {
        std::vector<BoneBits> bits;
        BoneNumbering numbering;
        for (const PrimitiveSet& set : m_sets) {
            bits.push_back(numbering.BitsOf(set.Palette));
            m_wordCount = std::max(m_wordCount, bits.back().size());
        }
        m_bits.resize(m_sets.size() * m_wordCount);
        for (std::size_t i = 0; i < bits.size(); ++i)
            std::copy(bits[i].begin(), bits[i].end(), BitsOf(i).begin());
    }

    /// The palette of a set as bits.
    std::span<std::uint64_t> BitsOf(std::size_t i)
    {
        return std::span(m_bits).subspan(i * m_wordCount, m_wordCount);
    }

    bool StandsBefore(std::size_t left, std::size_t right) const
    {
        return m_places[left].Size != m_places[right].Size
                   ? m_places[left].Size > m_places[right].Size
                   : m_places[left].Sequence < m_places[right].Sequence;
    }

    std::int64_t CountShared(std::size_t i, std::size_t j) const
    {
        std::int64_t count = 0;
        for (std::size_t word = 0; word < m_wordCount; ++word)
            count += std::popcount(m_bits[i * m_wordCount + word] & m_bits[j * m_wordCount + word]);
        return count;
    }

    std::int64_t ScoreOf(std::size_t i, std::size_t j) const
    {
        const std::int64_t shared = CountShared(i, j);
        const std::int64_t together = m_places[i].Size + m_places[j].Size - shared;
        if (together > m_capacity)
            return NoScore;
        const std::int64_t room = shared - together + m_capacity + 1;
        return (room * 256 + shared) * 256 + std::max(m_places[i].Size, m_places[j].Size);
    }

    /// Takes j, which stands behind i, as the partner of i if it is better than the present one.
    void Consider(std::size_t i, std::size_t j)
    {
        Choice& choice = m_choices[i];
        const std::int64_t score = ScoreOf(i, j);
        if (score < LowestScore || score < choice.Score)
            return;
        // This holds of an outdated partner too: it went at its place or moved forward from there, and all
        // others of that score stand behind it.
        if (score == choice.Score && j != choice.Partner && !StandsBefore(j, choice.Partner))
            return;
        choice = {score, j, false};
    }

    void ChooseAnew(std::size_t i)
    {
        m_choices[i] = {};
        for (const std::size_t j : m_alive)
            if (j != i && StandsBefore(i, j))
                Consider(i, j);
    }

    bool IsBetter(std::size_t i, std::size_t other) const
    {
        return m_choices[i].Score != m_choices[other].Score ? m_choices[i].Score > m_choices[other].Score
                                                            : StandsBefore(i, other);
    }

    /// The first member of the best pair; nothing if no pair is worth merging.
    std::optional<std::size_t> FindBest()
    {
        while (true) {
            std::optional<std::size_t> best;
            for (const std::size_t i : m_alive)
                if (m_choices[i].Score >= LowestScore && (!best || IsBetter(i, *best)))
                    best = i;
            if (!best || !m_choices[*best].IsOutdated)
                return best;
            ChooseAnew(*best);
        }
    }

    void Merge(std::size_t i, std::size_t j)
    {
        Absorb(i, j);
        std::erase(m_alive, j);
        for (const std::size_t k : m_alive) {
            if (k == i)
                continue;
            Choice& choice = m_choices[k];
            if (choice.Score >= LowestScore && (choice.Partner == i || choice.Partner == j))
                choice.IsOutdated = true;
            if (StandsBefore(k, i))
                Consider(k, i);
        }
        ChooseAnew(i);
    }

    void Absorb(std::size_t i, std::size_t j)
    {
        PrimitiveSet& set = m_sets[i];
        PrimitiveSet& other = m_sets[j];
        set.Polygons.insert(set.Polygons.end(), other.Polygons.begin(), other.Polygons.end());
        for (Bone* bone : other.Palette)
            InsertBone(set.Palette, *bone);
        for (std::size_t word = 0; word < m_wordCount; ++word)
            BitsOf(i)[word] |= BitsOf(j)[word];
        if (SizeOf(set) > m_places[i].Size)
            m_places[i] = {SizeOf(set), m_nextSequence++};
        other = {};
    }

    std::int64_t m_capacity;
    std::vector<PrimitiveSet> m_sets;
    std::vector<Place> m_places;
    std::vector<Choice> m_choices;
    std::vector<std::size_t> m_alive;  ///< sets that are not merged into others, ascending
    std::vector<std::uint64_t> m_bits; ///< palettes, `m_wordCount` words each
    std::size_t m_wordCount = 0;
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
