#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tq4x
{

/// Mixes one more word into a hash.
constexpr std::uint64_t MixHash(std::uint64_t hash, std::uint32_t word)
{
    hash = (hash ^ word) * 0x9E3779B97F4A7C15u;
    return hash ^ (hash >> 29);
}

/// Finds numbered things by their hash; the things themselves stay with the caller, and the numbers are
/// theirs. Open addressing, grown at two thirds; entries are small, since in large lists the time goes into
/// reaching them.
class HashIndex
{
public:
    HashIndex() : m_entries(16) {}

    /// The number of the thing for which `isEqual(number)` holds; `newNumber`, from then on found, if there
    /// is none. `newNumber` is 0 or above.
    template<typename Equal>
    std::int32_t FindOrAdd(std::uint64_t hash, std::int32_t newNumber, Equal isEqual)
    {
        if ((m_count + 1) * 3 > m_entries.size() * 2)
            Grow();
        const auto mark = static_cast<std::uint32_t>(hash ^ hash >> 32);
        std::size_t place = PlaceOf(mark);
        for (; m_entries[place].Number >= 0; place = Next(place))
            if (m_entries[place].Mark == mark && isEqual(m_entries[place].Number))
                return m_entries[place].Number;
        m_entries[place] = {mark, newNumber};
        ++m_count;
        return newNumber;
    }

private:
    struct Entry
    {
        std::uint32_t Mark = 0;
        std::int32_t Number = -1; ///< -1 for a free place
    };

    std::size_t PlaceOf(std::uint32_t mark) const { return mark & (m_entries.size() - 1); }

    std::size_t Next(std::size_t place) const { return (place + 1) & (m_entries.size() - 1); }

    void Grow()
    {
        std::vector<Entry> old(m_entries.size() * 2);
        old.swap(m_entries);
        for (const Entry& entry : old)
            if (entry.Number >= 0) {
                std::size_t place = PlaceOf(entry.Mark);
                while (m_entries[place].Number >= 0)
                    place = Next(place);
                m_entries[place] = entry;
            }
    }

    std::vector<Entry> m_entries; ///< its size is a power of two
    std::size_t m_count = 0;
};

} // namespace tq4x
