#include "geometry/WeldPools.h"
#include "geometry/CheckMesh.h"
#include "geometry/CloneMesh.h"
#include "geometry/DropUnusedValues.h"
#include "support/GeometryScene.h"

#include <bit>

namespace tq4x
{
namespace
{

using namespace test;
using S = VertexSlot;

constexpr float Nan = std::numeric_limits<float>::quiet_NaN();

/// A shape of points: one for each number, in the slot of the first texture coordinate.
SeparateDataShape MakeShape(const std::vector<Vector2>& values, const std::vector<std::int32_t>& numbers)
{
    SeparateDataShape shape;
    shape.Pool = MakeVertexAttributePool({});
    shape.Pool[S::TextureCoordinate0].Edit<Vector2>() = values;
    for (const std::int32_t number : numbers) {
        PolygonCorner corner;
        corner[S::TextureCoordinate0] = number;
        static_cast<void>(AddPolygonToShape(shape, PolygonOf(std::span(&corner, 1))));
    }
    return shape;
}

std::vector<std::int32_t> NumbersOf(const SeparateDataShape& shape)
{
    std::vector<std::int32_t> numbers;
    for (const PolygonCorner& corner : shape.Corners)
        numbers.push_back(corner[S::TextureCoordinate0]);
    return numbers;
}

std::vector<float> FirstComponentsOf(const SeparateDataShape& shape)
{
    std::vector<float> components;
    for (const Vector2& value : shape.Pool[S::TextureCoordinate0].Read<Vector2>())
        components.push_back(value.X);
    return components;
}

TEST(WeldPools, Cases)
{
    const struct
    {
        const char* Name;
        std::vector<Vector2> Values;
        std::vector<std::int32_t> Numbers;
        std::vector<float> ExpectedValues;
        std::vector<std::int32_t> ExpectedNumbers;
    } cases[] = {
        {"order of first appearance",
         {{2, 0}, {5, 0}, {2, 0}, {7, 0}, {5, 0}},
         {0, 1, 2, 3, 4},
         {2, 5, 7},
         {0, 1, 0, 2, 1}},
        {"nothing to weld", {{1, 0}, {2, 0}, {3, 0}}, {2, 1, 0}, {1, 2, 3}, {2, 1, 0}},
        {"1e-7 apart stays apart", {{0, 0}, {1e-7f, 0}, {0, 0}}, {0, 1, 2}, {0, 1e-7f}, {0, 1, 0}},
        {"one bit apart stays apart", {{1, 0}, {1.0000001f, 0}}, {0, 1}, {1, 1.0000001f}, {0, 1}},
        {"every component counts", {{1, 0}, {1, 1}, {1, 0}}, {0, 1, 2}, {1, 1}, {0, 1, 0}},
        {"minus zero equals zero", {{0.0f, -0.0f}, {-0.0f, 0.0f}}, {0, 1}, {0}, {0, 0}},
        {"unused values take part", {{3, 0}, {4, 0}, {3, 0}, {4, 0}}, {3}, {3, 4}, {1}},
        {"absent entries stay", {{1, 0}, {1, 0}}, {-1, 1, -1}, {1}, {-1, 0, -1}},
        {"entries past the list become 0", {{1, 0}, {2, 0}}, {1, 2, 99}, {1, 2}, {1, 0, 0}},
        {"the same when values are welded", {{1, 0}, {1, 0}, {2, 0}}, {2, 3}, {1, 2}, {1, 0}},
        {"an empty list is left alone", {}, {0, -1, 5}, {}, {0, -1, 5}},
    };

    for (const auto& test : cases) {
        SeparateDataShape shape = MakeShape(test.Values, test.Numbers);
        WeldPools(shape);
        EXPECT_EQ(FirstComponentsOf(shape), test.ExpectedValues) << test.Name;
        EXPECT_EQ(NumbersOf(shape), test.ExpectedNumbers) << test.Name;
    }
}

TEST(WeldPools, TheFirstValueKeepsItsBits)
{
    SeparateDataShape shape = MakeShape({{-0.0f, 1}, {0.0f, 1}}, {0, 1});
    WeldPools(shape);
    ASSERT_EQ(FirstComponentsOf(shape).size(), 1u);
    EXPECT_TRUE(std::signbit(FirstComponentsOf(shape)[0]));
}

TEST(WeldPools, NoNumbersStayOnTheirOwn)
{
    SeparateDataShape shape = MakeShape({{Nan, 0}, {1, 0}, {Nan, 0}, {1, 0}, {0, Nan}}, {0, 1, 2, 3, 4});
    WeldPools(shape);
    EXPECT_EQ(NumbersOf(shape), (std::vector<std::int32_t>{0, 1, 2, 1, 3}));
    EXPECT_TRUE(std::isnan(FirstComponentsOf(shape)[2]));
}

TEST(WeldPools, ManyEqualNoNumbersDoNotMeetEachOther)
{
    // A method that looks each of them up among the others would run for minutes here.
    constexpr std::size_t count = 300000;
    SeparateDataShape shape = MakeShape(std::vector<Vector2>(count, {Nan, 0}), {0, 299999});
    WeldPools(shape);
    EXPECT_EQ(FirstComponentsOf(shape).size(), count);
}

TEST(WeldPools, WeldsEachSlotOnItsOwn)
{
    SeparateDataShape shape;
    shape.Pool = MakeVertexAttributePool({});
    shape.Pool[S::Normal].Edit<Vector3>() = {{0, 0, 1}, {0, 0, 1}};
    shape.Pool[S::Tangent].Edit<Vector3>() = {{0, 0, 1}, {1, 0, 0}};
    shape.Pool[S::Color].Edit<Vector4>() = {{1, 1, 1, 1}, {1, 1, 1, 0}, {1, 1, 1, 1}};
    PolygonCorner corner;
    corner[S::Normal] = 1;
    corner[S::Tangent] = 1;
    corner[S::Color] = 2;
    corner[S::BoneIndex] = 4; // not ours
    static_cast<void>(AddPolygonToShape(shape, PolygonOf(std::span(&corner, 1))));
    WeldPools(shape);
    EXPECT_EQ(shape.Corners[0][S::Normal], 0);
    EXPECT_EQ(shape.Corners[0][S::Tangent], 1);
    EXPECT_EQ(shape.Corners[0][S::Color], 0);
    EXPECT_EQ(shape.Corners[0][S::BoneIndex], 4);
    EXPECT_EQ(shape.Corners[0][S::Position], -1);
}

TEST(WeldPools, SharedListsAreWeldedOnceAndStayShared)
{
    Mesh mesh = MakeMesh();
    mesh.Pool[S::Position].Edit<Vector3>() = {{1, 0, 0}, {1, 0, 0}, {2, 0, 0}};
    for (const std::uint32_t material : {0u, 1u, 2u})
        AddVertices(mesh, material, {0, 1, 2});
    mesh.Shapes[2]->Pool[S::Position].Edit<Vector3>()[2] = {1, 0, 0}; // has a list of its own
    WeldCache cache;
    for (auto& [material, shape] : mesh.Shapes)
        WeldPools(*shape, cache);
    const auto list = [&](std::uint32_t material) {
        return mesh.Shapes[material]->Pool[S::Position].Read<Vector3>().data();
    };
    EXPECT_EQ(list(0), list(1));
    EXPECT_NE(list(0), list(2));
    EXPECT_EQ(cache.Entries[0].size(), 1u);
    EXPECT_EQ(mesh.Shapes[1]->Corners[2][S::Position], 1);
    EXPECT_EQ(mesh.Shapes[2]->Corners[2][S::Position], 0);
    EXPECT_EQ(mesh.Pool[S::Position].Size(), 3u); // the template stays
}

TEST(DropUnusedValues, Cases)
{
    const struct
    {
        const char* Name;
        std::vector<Vector2> Values;
        std::vector<std::int32_t> Numbers;
        std::vector<float> ExpectedValues;
        std::vector<std::int32_t> ExpectedNumbers;
    } cases[] = {
        {"all used", {{1, 0}, {2, 0}}, {1, 0}, {1, 2}, {1, 0}},
        {"the first goes, the others move down", {{1, 0}, {2, 0}, {3, 0}}, {2, 1, 2}, {2, 3}, {1, 0, 1}},
        {"the last goes", {{1, 0}, {2, 0}}, {0}, {1}, {0}},
        {"equal values stay two", {{1, 0}, {1, 0}, {2, 0}}, {0, 1}, {1, 1}, {0, 1}},
        {"none used", {{1, 0}, {2, 0}}, {-1}, {}, {-1}},
        {"entries past the list mark nothing", {{1, 0}, {2, 0}}, {1, 7}, {2}, {0, 7}},
        {"no corners", {{1, 0}}, {}, {}, {}},
        {"an empty list", {}, {3}, {}, {3}},
    };

    for (const auto& test : cases) {
        SeparateDataShape shape = MakeShape(test.Values, test.Numbers);
        DropUnusedValues(shape);
        EXPECT_EQ(FirstComponentsOf(shape), test.ExpectedValues) << test.Name;
        EXPECT_EQ(NumbersOf(shape), test.ExpectedNumbers) << test.Name;
    }
}

TEST(DropUnusedValues, CountsOverManyWords)
{
    std::vector<Vector2> values(1000);
    std::vector<std::int32_t> numbers;
    std::vector<float> expected;
    for (std::int32_t i = 0; i < 1000; ++i) {
        values[static_cast<std::size_t>(i)].X = static_cast<float>(i);
        if (i % 7 == 3 || i / 64 == 5) {
            numbers.push_back(i);
            expected.push_back(static_cast<float>(i));
        }
    }
    SeparateDataShape shape = MakeShape(values, numbers);
    DropUnusedValues(shape);
    EXPECT_EQ(FirstComponentsOf(shape), expected);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        EXPECT_EQ(NumbersOf(shape)[i], static_cast<std::int32_t>(i));
}

TEST(DropUnusedValues, AnUnreferencedNormalGoesAndLaterIndicesShift)
{
    Mesh mesh = MakeMesh();
    mesh.Pool[S::Normal].Edit<Vector3>() = {{0, 0, 1}, {0, 1, 0}, {1, 0, 0}};
    std::vector<PolygonCorner> corners(3);
    corners[0][S::Normal] = 0;
    corners[1][S::Normal] = 2;
    corners[2][S::Normal] = 2;
    static_cast<void>(AddPolygon(mesh, 0, PolygonOf(corners)));
    DropUnusedValues(*mesh.Shapes[0]);
    EXPECT_EQ(mesh.Shapes[0]->Pool[S::Normal].Read<Vector3>(), (std::vector<Vector3>{{0, 0, 1}, {1, 0, 0}}));
    EXPECT_EQ(mesh.Shapes[0]->Corners[1][S::Normal], 1);
    EXPECT_EQ(mesh.Pool[S::Normal].Size(), 3u);
}

template<typename T>
void WeldListByTheLetter(SeparateDataShape& shape, std::size_t slot)
{
    if (shape.Pool.Slots[slot].Size() == 0)
        return;
    std::vector<T>& values = shape.Pool.Slots[slot].Edit<T>();
    const std::size_t oldSize = values.size();
    std::vector<std::int32_t> map(oldSize, -1);
    std::size_t count = 0;
    for (std::size_t i = 0; i < oldSize; ++i) {
        if (map[i] != -1)
            continue;
        map[i] = static_cast<std::int32_t>(count);
        for (std::size_t j = i + 1; j < oldSize; ++j)
            if (map[j] == -1 && values[j] == values[i])
                map[j] = static_cast<std::int32_t>(count);
        values[count++] = values[i];
    }
    values.resize(count);
    for (PolygonCorner& corner : shape.Corners) {
        std::int32_t& number = corner.Slots[slot];
        if (number >= static_cast<std::int32_t>(oldSize))
            number = 0;
        else if (number >= 0)
            number = map[static_cast<std::size_t>(number)];
    }
}

template<typename T>
void DropFromListByTheLetter(SeparateDataShape& shape, std::size_t slot)
{
    std::vector<T>& values = shape.Pool.Slots[slot].Edit<T>();
    std::vector<std::int32_t> map(values.size(), -1);
    for (const PolygonCorner& corner : shape.Corners)
        if (corner.Slots[slot] >= 0)
            map[static_cast<std::size_t>(corner.Slots[slot])] = 0;
    std::int32_t count = 0;
    for (std::size_t i = 0; i < values.size(); ++i)
        if (map[i] != -1) {
            values[static_cast<std::size_t>(count)] = values[i];
            map[i] = count++;
        }
    values.resize(static_cast<std::size_t>(count));
    for (PolygonCorner& corner : shape.Corners)
        if (corner.Slots[slot] >= 0)
            corner.Slots[slot] = map[static_cast<std::size_t>(corner.Slots[slot])];
}

/// Calls `visit.operator()<T>(slot)` for each slot that has a list, with the type of its values.
template<typename Visit>
void ForEachListSlot(Visit visit)
{
    for (std::size_t slot = 0; slot < VertexSlotCount; ++slot)
        if (slot < 3)
            visit.template operator()<Vector3>(slot);
        else if (slot >= 4 && slot < 7)
            visit.template operator()<Vector2>(slot);
        else if (slot == 3 || slot > 8)
            visit.template operator()<Vector4>(slot);
}

template<typename T>
void ExpectEqualLists(const SeparateDataShape& shape, const SeparateDataShape& literal, std::size_t slot)
{
    EXPECT_EQ(BytesOf(shape.Pool.Slots[slot].Read<T>()), BytesOf(literal.Pool.Slots[slot].Read<T>()))
        << "slot " << slot;
}

void ExpectEqualPools(const SeparateDataShape& shape, const SeparateDataShape& literal)
{
    ForEachListSlot([&]<typename T>(std::size_t slot) { ExpectEqualLists<T>(shape, literal, slot); });
    EXPECT_EQ(shape.Corners, literal.Corners);
}

TEST(WeldPools, AgreesWithTheQuadraticScan)
{
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Skeleton bones(1);
        const RandomMeshSettings settings{.Seed = seed,
                                          .ValueCount = 5 + static_cast<std::int32_t>(seed) * 3,
                                          .DistinctValues = 2 + static_cast<std::int32_t>(seed % 20)};
        Mesh mesh = MakeRandomMesh(settings, bones);
        const std::unique_ptr<Mesh> literal = CloneMesh(mesh);
        WeldCache cache;
        for (auto& [material, shape] : mesh.Shapes) {
            SeparateDataShape& other = *literal->Shapes[material];
            WeldPools(*shape, cache);
            ForEachListSlot([&]<typename T>(std::size_t slot) { WeldListByTheLetter<T>(other, slot); });
            ExpectEqualPools(*shape, other);
            DropUnusedValues(*shape);
            ForEachListSlot([&]<typename T>(std::size_t slot) { DropFromListByTheLetter<T>(other, slot); });
            ExpectEqualPools(*shape, other);
        }
        EXPECT_THAT(CheckMesh(mesh, ShapeStage::Compacted), testing::IsEmpty());
    }
}

TEST(WeldPools, WeldThenExpandGivesTheSameCorners)
{
    for (std::uint32_t seed = 100; seed < 160; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Skeleton bones(1);
        Mesh mesh = MakeRandomMesh({.Seed = seed, .DistinctValues = 4}, bones);
        for (auto& [material, shape] : mesh.Shapes) {
            std::vector<std::string> before;
            for (const PolygonCorner& corner : shape->Corners)
                before.push_back(ExpandCorner(*shape, corner));
            WeldPools(*shape);
            EXPECT_THAT(CheckShape(*shape, ShapeStage::Welded), testing::IsEmpty());
            DropUnusedValues(*shape);
            for (std::size_t i = 0; i < before.size(); ++i)
                ASSERT_EQ(ExpandCorner(*shape, shape->Corners[i]), before[i]) << "corner " << i;
        }
    }
}

} // namespace
} // namespace tq4x
