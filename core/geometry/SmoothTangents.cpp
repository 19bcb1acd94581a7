#include "geometry/SmoothTangents.h"

#include "geometry/VectorMath.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <unordered_map>

namespace tq4x
{
namespace
{

/// Distances from which on entries are apart, in positions (host units) and coordinates alike.
constexpr float AlikeDistance = 1e-6f;
/// Cosine of the single-precision value next to pi/2.
constexpr float AlikeCosine = -4.37113883e-08f;

/// Edge of a grid cell. Larger than the reach, so that an entry touches two cells an axis at most and nearly
/// always one.
constexpr double CellSize = 1e-5;
/// How far apart alike entries can be along one axis, with room for the rounding of single precision.
constexpr double Reach = 1.01e-6;
/// Positions and coordinates.
constexpr std::size_t AxisCount = 5;

constexpr std::uint32_t None = UINT32_MAX;

using Point = std::array<double, AxisCount>;

/// Numbers of a cell along the axes. They stay floating point: a coordinate may be anything finite.
using Cell = std::array<double, AxisCount>;

Point PointOf(const TangentCorner& corner)
{
    return {corner.Position.X, corner.Position.Y, corner.Position.Z, corner.Coordinate.X,
            corner.Coordinate.Y};
}

/// Cells are centred on the multiples of their size: round coordinates then lie inside a cell, not on the
/// border of two.
double CellNumber(double coordinate)
{
    return std::floor(coordinate / CellSize + 0.5);
}

struct CellHash
{
    std::size_t operator()(const Cell& cell) const
    {
        std::uint64_t hash = 0;
        for (const double number : cell) {
            const auto bits = std::bit_cast<std::uint64_t>(number + 0.0); // minus zero equals zero
            hash = (hash ^ bits ^ bits >> 32) * 0x9E3779B97F4A7C15u;
            hash ^= hash >> 32;
        }
        return static_cast<std::size_t>(hash);
    }
};

bool IsFinite(const Vector3& vector)
{
    return std::isfinite(vector.X) && std::isfinite(vector.Y) && std::isfinite(vector.Z);
}

bool IsFinite(const TangentEntry& entry)
{
    return IsFinite(entry.Corner.Position) && IsFinite(entry.Tangent) &&
           std::isfinite(entry.Corner.Coordinate.X) && std::isfinite(entry.Corner.Coordinate.Y);
}

/// The seeds met so far, by the cell that they lie in, in ascending order.
class SeedGrid
{
public:
    explicit SeedGrid(const std::vector<TangentEntry>& entries)
        : m_entries(entries),
          m_next(entries.size(), None)
    {
        m_cells.reserve(entries.size());
    }

    /// The lowest seed that is alike with the entry, or `None`.
    std::uint32_t Find(const TangentEntry& entry) const
    {
        const Point point = PointOf(entry.Corner);
        Cell low{};
        Cell high{};
        unsigned spread = 0; // the axes on which the entry touches two cells
        for (std::size_t axis = 0; axis < AxisCount; ++axis) {
            low[axis] = CellNumber(point[axis] - Reach);
            high[axis] = CellNumber(point[axis] + Reach);
            spread |= static_cast<unsigned>(low[axis] != high[axis]) << axis;
        }
        std::uint32_t lowest = FindInCell(low, entry);
        for (unsigned upper = spread; upper != 0; upper = (upper - 1) & spread)
            lowest = std::min(lowest, FindInCell(Choose(low, high, upper), entry));
        return lowest;
    }

    void Insert(std::uint32_t seed)
    {
        const Point point = PointOf(m_entries[seed].Corner);
        Cell cell{};
        for (std::size_t axis = 0; axis < AxisCount; ++axis)
            cell[axis] = CellNumber(point[axis]);
        const auto [found, isNew] = m_cells.try_emplace(cell, Chain{seed, seed});
        if (isNew)
            return;
        m_next[found->second.Last] = seed;
        found->second.Last = seed;
    }

private:
    struct Chain
    {
        std::uint32_t First;
        std::uint32_t Last;
    };

    /// The cell with the high number on the axes whose bits are set in `upper`.
    static Cell Choose(const Cell& low, const Cell& high, unsigned upper)
    {
        Cell cell = low;
        for (std::size_t axis = 0; axis < AxisCount; ++axis)
            if ((upper >> axis & 1u) != 0)
                cell[axis] = high[axis];
        return cell;
    }

    std::uint32_t FindInCell(const Cell& cell, const TangentEntry& entry) const
    {
        const auto found = m_cells.find(cell);
        if (found == m_cells.end())
            return None;
        for (std::uint32_t seed = found->second.First; seed != None; seed = m_next[seed])
            if (AreAlike(m_entries[seed], entry))
                return seed;
        return None;
    }

    const std::vector<TangentEntry>& m_entries;
    std::vector<std::uint32_t> m_next; ///< by seed: the next one of its cell
    std::unordered_map<Cell, Chain, CellHash> m_cells;
};

/// For each entry the seed that it joins, `None` for seeds and entries that take no part.
std::vector<std::uint32_t> FindSeeds(const std::vector<TangentEntry>& entries)
{
    std::vector<std::uint32_t> seeds(entries.size(), None);
    SeedGrid grid(entries);
    for (std::uint32_t i = 0; i < entries.size(); ++i) {
        if (!entries[i].IsStored || !IsFinite(entries[i]))
            continue;
        seeds[i] = grid.Find(entries[i]);
        if (seeds[i] == None)
            grid.Insert(i);
    }
    return seeds;
}

} // namespace

bool AreAlike(const TangentEntry& a, const TangentEntry& b)
{
    const Vector3 offset = Subtract(a.Corner.Position, b.Corner.Position);
    const float u = a.Corner.Coordinate.X - b.Corner.Coordinate.X;
    const float v = a.Corner.Coordinate.Y - b.Corner.Coordinate.Y;
    return std::sqrt(Dot(offset, offset)) < AlikeDistance && std::sqrt(u * u + v * v) < AlikeDistance &&
           Dot(a.Tangent, b.Tangent) > AlikeCosine && IsFinite(a) && IsFinite(b);
}

void SmoothTangents(std::vector<TangentEntry>& entries)
{
    const std::vector<std::uint32_t> seeds = FindSeeds(entries);
    std::vector<bool> isJoined(entries.size(), false);
    // The seeds themselves collect the sums: nothing asks for likeness any more.
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (seeds[i] == None)
            continue;
        entries[seeds[i]].Tangent = Add(entries[seeds[i]].Tangent, entries[i].Tangent);
        isJoined[seeds[i]] = true;
    }
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (isJoined[i])
            entries[i].Tangent = Normalize(entries[i].Tangent);
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (seeds[i] != None)
            entries[i].Tangent = entries[seeds[i]].Tangent;
}

} // namespace tq4x
