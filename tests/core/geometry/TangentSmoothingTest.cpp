#include "geometry/SmoothTangents.h"
#include "geometry/VectorMath.h"

#include <cmath>
#include <limits>
#include <random>

namespace tq4x
{
namespace
{

constexpr float Nan = std::numeric_limits<float>::quiet_NaN();
constexpr float Infinity = std::numeric_limits<float>::infinity();

/// The scan of all pairs that the grid must agree with.
void SmoothByAllPairs(std::vector<TangentEntry>& entries)
{
    std::vector<bool> isMerged(entries.size(), false);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (!entries[i].IsStored || isMerged[i])
            continue;
        std::vector<std::size_t> group{i};
        for (std::size_t j = i + 1; j < entries.size(); ++j) {
            if (!entries[j].IsStored || isMerged[j] || !AreAlike(entries[i], entries[j]))
                continue;
            isMerged[j] = true;
            group.push_back(j);
        }
        if (group.size() == 1)
            continue;
        Vector3 sum = entries[i].Tangent;
        for (std::size_t k = 1; k < group.size(); ++k)
            sum = Add(sum, entries[group[k]].Tangent);
        for (const std::size_t member : group)
            entries[member].Tangent = Normalize(sum);
    }
}

/// Bytes of the tangents: NaN must agree with NaN, and minus zero differs from zero.
std::vector<std::uint32_t> BitsOf(const std::vector<TangentEntry>& entries)
{
    std::vector<std::uint32_t> bits;
    for (const TangentEntry& entry : entries)
        for (const float value : {entry.Tangent.X, entry.Tangent.Y, entry.Tangent.Z})
            bits.push_back(std::bit_cast<std::uint32_t>(value));
    return bits;
}

TangentEntry At(const Vector3& position, const Vector2& coordinate, const Vector3& tangent)
{
    return {{position, coordinate}, tangent, true};
}

TEST(AreAlike, LooksAtPositionCoordinateAndAngle)
{
    const Vector3 x{1, 0, 0};

    const struct
    {
        const char* Name;
        TangentEntry A;
        TangentEntry B;
        bool Expected;
    } cases[] = {
        {"the same", At({1, 2, 3}, {0, 1}, x), At({1, 2, 3}, {0, 1}, x), true},
        {"positions just below 1e-6 apart", At({}, {}, x), At({9.9e-7f, 0, 0}, {}, x), true},
        {"positions 1e-6 apart", At({}, {}, x), At({0, 1e-6f, 0}, {}, x), false},
        {"positions 1e-6 apart along the diagonal", At({}, {}, x), At({7e-7f, 7e-7f, 7e-7f}, {}, x), false},
        {"coordinates just below 1e-6 apart", At({}, {}, x), At({}, {0, 9.9e-7f}, x), true},
        {"coordinates 1e-6 apart", At({}, {}, x), At({}, {1e-6f, 0}, x), false},
        {"perpendicular tangents", At({}, {}, x), At({}, {}, {0, 1, 0}), true},
        {"a hair beyond a right angle", At({}, {}, x), At({}, {}, {-4.3e-8f, 1, 0}), true},
        {"exactly at the limit", At({}, {}, x), At({}, {}, {-4.37113883e-08f, 1, 0}), false},
        {"an obtuse angle", At({}, {}, x), At({}, {}, {-1e-3f, 1, 0}), false},
        {"opposite", At({}, {}, x), At({}, {}, {-1, 0, 0}), false},
        {"a zero tangent", At({}, {}, x), At({}, {}, {}), true},
        {"position that is no number", At({Nan, 0, 0}, {}, x), At({Nan, 0, 0}, {}, x), false},
        {"coordinate that is no number", At({}, {0, Nan}, x), At({}, {0, Nan}, x), false},
        {"tangent that is no number", At({}, {}, {Nan, 0, 0}), At({}, {}, {Nan, 0, 0}), false},
        {"infinite position", At({Infinity, 0, 0}, {}, x), At({Infinity, 0, 0}, {}, x), false},
        {"infinite tangent", At({}, {}, {Infinity, 0, 0}), At({}, {}, x), false},
    };

    for (const auto& test : cases) {
        EXPECT_EQ(AreAlike(test.A, test.B), test.Expected) << test.Name;
        EXPECT_EQ(AreAlike(test.B, test.A), test.Expected) << test.Name << ", the other way";
    }
}

TEST(AreAlike, LimitIsTheCosineOfTheSinglePrecisionRightAngle)
{
    EXPECT_EQ(static_cast<float>(std::cos(static_cast<double>(1.5707964f))), -4.37113883e-08f);
}

TEST(SmoothTangents, Groups)
{
    const Vector3 x{1, 0, 0};
    const Vector3 y{0, 1, 0};
    const float half = 1.0f / std::sqrt(2.0f);

    const struct
    {
        const char* Name;
        std::vector<TangentEntry> Entries;
        std::vector<Vector3> Expected;
    } cases[] = {
        {"none", {}, {}},
        {"one keeps its tangent", {At({}, {}, {3, 0, 0})}, {{3, 0, 0}}},
        {"two alike get the normalised sum",
         {At({}, {}, x), At({}, {}, y)},
         {{half, half, 0}, {half, half, 0}}},
        {"two apart keep their own", {At({}, {}, x), At({1, 0, 0}, {}, y)}, {x, y}},
        {"at more than a right angle they stay apart",
         {At({}, {}, x), At({}, {}, {-1, 0, 0})},
         {x, {-1, 0, 0}}},
        {"judged against the seed: the last is alike to the member, not to the seed",
         {At({}, {}, x), At({}, {}, y), At({}, {}, {-1, 0, 0})},
         {{half, half, 0}, {half, half, 0}, {-1, 0, 0}}},
        {"a member is nobody's seed: the third starts a group of its own",
         {At({}, {}, x), At({9e-7f, 0, 0}, {}, x), At({1.8e-6f, 0, 0}, {}, y), At({2.5e-6f, 0, 0}, {}, y)},
         {x, x, y, y}},
        {"judged by tangents before smoothing",
         {At({}, {}, x), At({}, {}, {0, 1, 0}), At({}, {}, {-0.1f, -1, 0}), At({}, {}, {-1, 0.5f, 0})},
         {{half, half, 0}, {half, half, 0}, {-0.1f, -1, 0}, {-1, 0.5f, 0}}},
        {"the first seed wins",
         {At({}, {}, x), At({}, {}, {-1, 0, 0}), At({}, {}, y)},
         {{half, half, 0}, {-1, 0, 0}, {half, half, 0}}},
        {"a zero sum stays zero", {At({}, {}, {}), At({}, {}, {})}, {{}, {}}},
        {"an entry that no corner stored takes no part",
         {At({}, {}, x), {{}, {}, false}, At({}, {}, {-1, 0, 0})},
         {x, {}, {-1, 0, 0}}},
    };

    for (const auto& test : cases) {
        std::vector<TangentEntry> entries = test.Entries;
        SmoothTangents(entries);
        for (std::size_t i = 0; i < entries.size(); ++i)
            EXPECT_EQ(entries[i].Tangent, test.Expected[i]) << test.Name << ", entry " << i;
    }
}

TEST(SmoothTangents, ZeroEntriesThatAreStoredGlueAndThoseThatAreNotDoNot)
{
    // A stored zero tangent is alike to everything at its place, so it pulls opposite tangents together.
    std::vector<TangentEntry> stored{At({}, {}, {}), At({}, {}, {1, 0, 0}), At({}, {}, {-1, 0, 0})};
    SmoothTangents(stored);
    EXPECT_EQ(stored[1].Tangent, Vector3{});
    std::vector<TangentEntry> absent = {{}, At({}, {}, {1, 0, 0}), At({}, {}, {-1, 0, 0})};
    SmoothTangents(absent);
    EXPECT_EQ(absent[1].Tangent, (Vector3{1, 0, 0}));
}

TangentEntry AtPoint(const std::array<double, 5>& point, const Vector3& tangent)
{
    std::array<float, 5> p{};
    for (std::size_t axis = 0; axis < 5; ++axis)
        p[axis] = static_cast<float>(point[axis]);
    return At({p[0], p[1], p[2]}, {p[3], p[4]}, tangent);
}

TEST(SmoothTangents, NeighboursAcrossEveryBorderOfTheGridFindEachOther)
{
    // Pairs 9.5e-7 apart, with the border close behind the first or close before the second.
    for (const double offset : {-1e-7, -5e-7, -8.5e-7}) {
        for (std::size_t axis = 0; axis < 5; ++axis) {
            for (int border = -3; border <= 3; ++border) {
                std::array<double, 5> a{};
                a.fill((border + 0.5) * 1e-5);
                a[axis] += offset;
                std::array<double, 5> b = a;
                b[axis] += 9.5e-7;
                std::vector<TangentEntry> entries{AtPoint(a, {1, 0, 0}), AtPoint(b, {0, 1, 0}),
                                                  AtPoint(a, {0, 0, 1})};
                SmoothTangents(entries);
                EXPECT_EQ(entries[0].Tangent, entries[1].Tangent)
                    << "offset " << offset << ", axis " << axis << ", border " << border;
            }
        }
    }
}

/// Random entries that crowd round a few places, on borders of cells, far out and beyond all numbers.
class CrowdedEntries
{
public:
    explicit CrowdedEntries(unsigned seed) : m_random(seed) {}

    std::vector<TangentEntry> Make(std::size_t count)
    {
        m_scale = Pick({1e-7f, 4e-7f, 3e-6f, 1e-5f});
        std::vector<TangentEntry> entries;
        for (std::size_t i = 0; i < count; ++i)
            entries.push_back({{{Coordinate(), Coordinate(), Coordinate()}, {Coordinate(), Coordinate()}},
                               Tangent(),
                               Below(10) != 0});
        return entries;
    }

private:
    int Below(int end) { return std::uniform_int_distribution(0, end - 1)(m_random); }

    float Pick(std::vector<float> values)
    {
        return values[static_cast<std::size_t>(Below(static_cast<int>(values.size())))];
    }

    float Coordinate()
    {
        if (Below(200) == 0)
            return Pick({Nan, Infinity, -Infinity, 3e38f, -3e38f, 1e-40f});
        if (Below(20) == 0)
            return Pick({5e-6f, -5e-6f, 0.5f, 15.99999f, 16.0f, -1000.0f, 1e9f});
        return static_cast<float>(Below(4)) * m_scale;
    }

    Vector3 Tangent()
    {
        if (Below(50) == 0)
            return {Pick({Nan, Infinity, 0.0f}), 0, Pick({0.0f, -0.0f, 1e30f})};
        std::uniform_real_distribution<float> component(-1.0f, 1.0f);
        if (Below(2) == 0)
            return {Pick({-1, 0, 1}), Pick({-1, 0, 1}), Pick({-1, 0, 1})};
        return Normalize({component(m_random), component(m_random), component(m_random)});
    }

    std::mt19937 m_random;
    float m_scale = 1e-6f;
};

TEST(SmoothTangents, AgreesWithTheScanOfAllPairs)
{
    constexpr unsigned seed = 361;
    CrowdedEntries source(seed);
    for (int test = 0; test < 300; ++test) {
        const std::vector<TangentEntry> entries = source.Make(120);
        std::vector<TangentEntry> fast = entries;
        std::vector<TangentEntry> literal = entries;
        SmoothTangents(fast);
        SmoothByAllPairs(literal);
        ASSERT_EQ(BitsOf(fast), BitsOf(literal)) << "seed " << seed << ", case " << test;
    }
}

} // namespace
} // namespace tq4x
