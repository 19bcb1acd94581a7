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
/// theirs. Open addressing, grown at two thirds.
class HashIndex
{
public:
    /// `expected` is a hint: how many things may come.
    explicit HashIndex(std::size_t expected = 0)
    {
        std::size_t size = 16;
        while (size * 2 < expected * 3)
            size *= 2;
        m_entries.resize(size);
    }

    /// The number of the thing for which `isEqual(number)` holds; `newNumber`, from then on found, if there
    /// is none. `newNumber` is 0 or above.
    template<typename Equal>
    std::int32_t FindOrAdd(std::uint64_t hash, std::int32_t newNumber, Equal isEqual)
    {
        if ((m_count + 1) * 3 > m_entries.size() * 2)
            Grow();
        std::size_t place = hash & (m_entries.size() - 1);
        for (; m_entries[place].Number >= 0; place = (place + 1) & (m_entries.size() - 1))
            if (m_entries[place].Hash == hash && isEqual(m_entries[place].Number))
                return m_entries[place].Number;
        m_entries[place] = {hash, newNumber};
        ++m_count;
        return newNumber;
    }

private:
    struct Entry
    {
        std::uint64_t Hash = 0;
        std::int32_t Number = -1; ///< -1 for a free place
    };

    void Grow()
    {
        std::vector<Entry> old(m_entries.size() * 2);
        old.swap(m_entries);
        for (const Entry& entry : old)
            if (entry.Number >= 0) {
                std::size_t place = entry.Hash & (m_entries.size() - 1);
                while (m_entries[place].Number >= 0)
                    place = (place + 1) & (m_entries.size() - 1);
                m_entries[place] = entry;
            }
    }

    std::vector<Entry> m_entries; ///< its size is a power of two
    std::size_t m_count = 0;
};

} // namespace tq4x
