#include "geometry/OrderPrimitiveSets.h"

#include "geometry/PaletteSlots.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace tq4x
{
namespace
{

/// Judges exchanges against the present order, of which the table of bones before each position and the loads
/// up to it are remembered: a trial starts at the first position that changes, ends when it can't be better
/// any more, and ends behind the second one as soon as the table is the remembered one.
class ExchangeSearch
{
public:
    explicit ExchangeSearch(const NumberedPalettes& palettes)
        : m_palettes(palettes.Palettes),
          m_slots(palettes.SlotCount, palettes.BoneIndices.size()),
          m_order(palettes.Palettes.size()),
          m_tables((palettes.Palettes.size() + 1) * palettes.SlotCount, PaletteSlots::Empty),
          m_loads(palettes.Palettes.size() + 1)
    {
        std::iota(m_order.begin(), m_order.end(), std::size_t{0});
        RememberFrom(0);
    }

    std::vector<std::size_t> FindOrder()
    {
        for (std::size_t i = 0; i + 1 < m_order.size(); ++i)
            for (std::size_t j = i + 1; j < m_order.size(); ++j)
                TryExchange(i, j);
        return m_order;
    }

private:
    /// The table before a position.
    std::span<const std::int32_t> TableAt(std::size_t position) const
    {
        const std::size_t size = m_slots.Slots().size();
        return std::span(m_tables).subspan(position * size, size);
    }

    void RememberFrom(std::size_t first)
    {
        m_slots.Restore(TableAt(first));
        for (std::size_t position = first; position < m_order.size(); ++position) {
            m_loads[position + 1] = m_loads[position] + m_slots.Load(m_palettes[m_order[position]]);
            const auto place = static_cast<std::ptrdiff_t>((position + 1) * m_slots.Slots().size());
            std::copy(m_slots.Slots().begin(), m_slots.Slots().end(), m_tables.begin() + place);
        }
    }

    void TryExchange(std::size_t i, std::size_t j)
    {
        std::swap(m_order[i], m_order[j]);
        if (IsBetter(i, j))
            RememberFrom(i);
        else
            std::swap(m_order[i], m_order[j]);
    }

    /// True if the order, which differs from the remembered one at i and j, needs fewer loads.
    bool IsBetter(std::size_t i, std::size_t j)
    {
        const std::int64_t limit = m_loads.back();
        std::int64_t loads = m_loads[i];
        m_slots.Restore(TableAt(i));
        for (std::size_t position = i; position < m_order.size(); ++position) {
            loads += m_slots.Load(m_palettes[m_order[position]]);
            if (loads >= limit) // it only rises
                return false;
            if (position >= j && std::ranges::equal(m_slots.Slots(), TableAt(position + 1)))
                return loads - m_loads[position + 1] < 0;
        }
        return true;
    }

    const std::vector<std::vector<std::int32_t>>& m_palettes;
    PaletteSlots m_slots;
    std::vector<std::size_t> m_order;   ///< numbers of sets
    std::vector<std::int32_t> m_tables; ///< slots before each position, and at the end
    std::vector<std::int64_t> m_loads;  ///< loads before each position, and in all
};

} // namespace

void OrderPrimitiveSets(SeparateDataShape& shape)
{
    const NumberedPalettes palettes = NumberPalettes(shape);
    const std::vector<std::size_t> order = ExchangeSearch(palettes).FindOrder();
    std::vector<PrimitiveSet> sets;
    for (const std::size_t set : order)
        sets.push_back(std::move(shape.PrimitiveSets[set]));
    shape.PrimitiveSets = std::move(sets);
}

} // namespace tq4x
