#include "geometry/DropUnusedValues.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

namespace tq4x
{
namespace
{

/// A subset of the numbers below a limit, and the rank of each among them.
class NumberSet
{
public:
    explicit NumberSet(std::size_t limit)
        : m_limit(limit),
          m_words((limit + 63) / 64),
          m_ranks(m_words.size())
    {}

    bool IsInRange(std::int32_t number) const
    {
        return number >= 0 && static_cast<std::size_t>(number) < m_limit;
    }

    void Add(std::int32_t number)
    {
        const auto place = static_cast<std::size_t>(number);
        m_words[place / 64] |= std::uint64_t{1} << place % 64;
    }

    /// Needed before ranks are asked for; the number of members.
    std::size_t CountMembers()
    {
        std::size_t count = 0;
        for (std::size_t i = 0; i < m_words.size(); ++i) {
            m_ranks[i] = static_cast<std::int32_t>(count);
            count += static_cast<std::size_t>(std::popcount(m_words[i]));
        }
        return count;
    }

    /// The number of members below a member.
    std::int32_t RankOf(std::int32_t number) const
    {
        const auto place = static_cast<std::size_t>(number);
        const std::uint64_t below = (std::uint64_t{1} << place % 64) - 1;
        return m_ranks[place / 64] + std::popcount(m_words[place / 64] & below);
    }

    /// Calls `visit(number)` in ascending order.
    template<typename Visit>
    void ForEach(Visit visit) const
    {
        for (std::size_t i = 0; i < m_words.size(); ++i)
            for (std::uint64_t word = m_words[i]; word != 0; word &= word - 1)
                visit(i * 64 + static_cast<std::size_t>(std::countr_zero(word)));
    }

private:
    std::size_t m_limit;
    std::vector<std::uint64_t> m_words;
    std::vector<std::int32_t> m_ranks; ///< members before each word
};

template<typename T>
SharedList<T> PickValues(const std::vector<T>& values, const NumberSet& used, std::size_t count)
{
    std::vector<T> picked;
    picked.reserve(count);
    used.ForEach([&](std::size_t number) { picked.push_back(values[number]); });
    return SharedList(std::move(picked));
}

template<typename T>
void DropFromSlot(SeparateDataShape& shape, std::size_t slot, SharedList<T>& list)
{
    if (list.IsEmpty())
        return;
    NumberSet used(list.Size());
    for (const PolygonCorner& corner : shape.Corners)
        if (used.IsInRange(corner.Slots[slot]))
            used.Add(corner.Slots[slot]);
    const std::size_t count = used.CountMembers();
    if (count == list.Size())
        return;
    list = PickValues(list.Read(), used, count);
    for (PolygonCorner& corner : shape.Corners)
        if (used.IsInRange(corner.Slots[slot]))
            corner.Slots[slot] = used.RankOf(corner.Slots[slot]);
}

} // namespace

void DropUnusedValues(SeparateDataShape& shape)
{
    for (std::size_t slot = 0; slot < VertexSlotCount; ++slot)
        std::visit(
            [&](auto& list) {
                if constexpr (!std::is_same_v<decltype(list), std::monostate&>)
                    DropFromSlot(shape, slot, list);
            },
            shape.Pool.Slots[slot].Data);
}

} // namespace tq4x
