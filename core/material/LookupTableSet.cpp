#include "material/LookupTable.h"

#include <algorithm>
#include <bit>
#include <unordered_set>
#include <utility>

namespace tq4x
{
namespace
{

bool HasSameContent(const LookupTable& a, const LookupTable& b)
{
    return a.IsGeneratedAsAbs == b.IsGeneratedAsAbs && a.IsSizeDoubled == b.IsSizeDoubled &&
           a.IsMipMap == b.IsMipMap && std::ranges::equal(a.Samples, b.Samples);
}

/// Equal for tables with the same content: both zeros have one hash, as they compare equal.
std::uint64_t HashOf(const LookupTable& table)
{
    constexpr std::uint64_t prime = 0x100000001b3; // 64-bit FNV-1a, a word at a time
    std::uint64_t hash = 0xcbf29ce484222325;
    const auto add = [&](std::uint32_t word) { hash = (hash ^ word) * prime; };
    add((table.IsGeneratedAsAbs ? 1u : 0u) | (table.IsSizeDoubled ? 2u : 0u) | (table.IsMipMap ? 4u : 0u));
    for (const float sample : table.Samples)
        add(sample == 0.0f ? 0u : std::bit_cast<std::uint32_t>(sample));
    return hash;
}

} // namespace

std::optional<std::int32_t> LookupTableSet::Find(const LookupTable& table) const
{
    const auto bucket = m_indicesByHash.find(HashOf(table));
    if (bucket == m_indicesByHash.end())
        return std::nullopt;
    for (const std::int32_t index : bucket->second)
        if (HasSameContent(m_tables[static_cast<std::size_t>(index)], table))
            return index;
    return std::nullopt;
}

std::int32_t LookupTableSet::Add(LookupTable table)
{
    const auto index = static_cast<std::int32_t>(m_tables.size());
    m_indicesByHash[HashOf(table)].push_back(index);
    m_tables.push_back(std::move(table));
    return index;
}

std::int32_t LookupTableSet::FindOrAdd(LookupTable table)
{
    const std::optional<std::int32_t> found = Find(table);
    return found ? *found : Add(std::move(table));
}

const LookupTable* LookupTableSet::At(std::int32_t index) const
{
    const bool isInside = index >= 0 && static_cast<std::size_t>(index) < m_tables.size();
    return isInside ? &m_tables[static_cast<std::size_t>(index)] : nullptr;
}

void LookupTableSet::MakeNamesUnique()
{
    // Names are only added, so the smallest free counter of a name never falls and the search goes on where
    // it ended for the last table of that name.
    std::unordered_set<std::string> taken;
    std::unordered_map<std::string, std::int64_t> nextCounters;
    for (LookupTable& table : m_tables) {
        if (taken.insert(table.Name).second)
            continue;
        std::int64_t& counter = nextCounters.try_emplace(table.Name, 1).first->second;
        std::string trial;
        do
            trial = table.Name + "_" + std::to_string(counter++);
        while (!taken.insert(trial).second);
        table.Name = std::move(trial);
    }
}

} // namespace tq4x
