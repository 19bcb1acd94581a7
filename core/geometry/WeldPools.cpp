#include "geometry/WeldPools.h"

#include "geometry/HashIndex.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace tq4x
{
namespace
{

constexpr std::uint64_t HashSeed = 0x51ED270B0A1F39C1u;

template<typename... Components>
std::uint64_t HashComponents(Components... components)
{
    std::uint64_t hash = HashSeed;
    // Adding plus zero turns -0 into +0, which are equal and must meet.
    ((hash = MixHash(hash, std::bit_cast<std::uint32_t>(components + 0.0f))), ...);
    return hash;
}

std::uint64_t HashOf(const Vector2& value)
{
    return HashComponents(value.X, value.Y);
}

std::uint64_t HashOf(const Vector3& value)
{
    return HashComponents(value.X, value.Y, value.Z);
}

std::uint64_t HashOf(const Vector4& value)
{
    return HashComponents(value.X, value.Y, value.Z, value.W);
}

template<typename T>
WeldCache::Entry WeldList(const SharedList<T>& list)
{
    const std::vector<T>& values = list.Read();
    std::vector<std::int32_t> map;
    map.reserve(values.size());
    std::vector<T> distinct;
    HashIndex index;
    for (const T& value : values) {
        const auto next = static_cast<std::int32_t>(distinct.size());
        // A value with a NaN is unequal to itself: it stays on its own, and never enters the index, where
        // many equal ones would only be in each other's way.
        const bool isComparable = value == value;
        const std::int32_t number =
            !isComparable ? next : index.FindOrAdd(HashOf(value), next, [&](std::int32_t candidate) {
                return distinct[static_cast<std::size_t>(candidate)] == value;
            });
        if (number == next)
            distinct.push_back(value);
        map.push_back(number);
    }
    if (distinct.size() == values.size())
        return {list, list, {}};
    return {list, SharedList(std::move(distinct)), std::move(map)};
}

template<typename T>
const WeldCache::Entry* FindEntry(const std::vector<WeldCache::Entry>& entries, const SharedList<T>& list)
{
    for (const WeldCache::Entry& entry : entries)
        if (std::get<SharedList<T>>(entry.Before).IsSharedWith(list))
            return &entry;
    return nullptr;
}

void RenumberCorners(SeparateDataShape& shape, std::size_t slot, std::size_t oldSize,
                     const std::vector<std::int32_t>& map)
{
    for (PolygonCorner& corner : shape.Corners) {
        std::int32_t& number = corner.Slots[slot];
        if (number >= 0 && static_cast<std::size_t>(number) >= oldSize)
            number = 0;
        else if (number >= 0 && !map.empty())
            number = map[static_cast<std::size_t>(number)];
    }
}

void Apply(SeparateDataShape& shape, std::size_t slot, const WeldCache::Entry& entry)
{
    const std::size_t oldSize = shape.Pool.Slots[slot].Size();
    shape.Pool.Slots[slot].Data = entry.After;
    RenumberCorners(shape, slot, oldSize, entry.Map);
}

template<typename T>
void WeldSlot(SeparateDataShape& shape, std::size_t slot, const SharedList<T>& list, WeldCache& cache)
{
    if (list.IsEmpty())
        return;
    std::vector<WeldCache::Entry>& entries = cache.Entries[slot];
    if (const WeldCache::Entry* known = FindEntry(entries, list)) {
        Apply(shape, slot, *known);
    } else if (list.IsShared()) {
        entries.push_back(WeldList(list));
        Apply(shape, slot, entries.back());
    } else {
        Apply(shape, slot, WeldList(list));
    }
}

} // namespace

void WeldPools(SeparateDataShape& shape, WeldCache& cache)
{
    for (std::size_t slot = 0; slot < VertexSlotCount; ++slot)
        std::visit(
            [&](const auto& list) {
                if constexpr (!std::is_same_v<decltype(list), const std::monostate&>)
                    WeldSlot(shape, slot, list, cache);
            },
            std::as_const(shape.Pool.Slots[slot].Data));
}

void WeldPools(SeparateDataShape& shape)
{
    WeldCache cache;
    WeldPools(shape, cache);
}

} // namespace tq4x
