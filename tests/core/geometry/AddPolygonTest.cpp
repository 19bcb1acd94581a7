#include "geometry/AddPolygon.h"
#include "geometry/CheckMesh.h"
#include "geometry/UpdatePolygonBones.h"
#include "support/GeometryScene.h"

namespace tq4x
{
namespace
{

using namespace test;

TEST(PolygonOf, TakesTheModeFromTheNumberOfCorners)
{
    const struct
    {
        std::size_t Count;
        PrimitiveMode Mode;
    } cases[] = {
        {1, PrimitiveMode::Points},      {2, PrimitiveMode::Lines},       {3, PrimitiveMode::Triangles},
        {4, PrimitiveMode::TriangleFan}, {5, PrimitiveMode::TriangleFan}, {100, PrimitiveMode::TriangleFan},
        {0, PrimitiveMode::TriangleFan},
    };

    for (const auto& test : cases) {
        const std::vector<PolygonCorner> corners(test.Count);
        const PolygonView polygon = PolygonOf(corners);
        EXPECT_EQ(polygon.Mode, test.Mode) << test.Count;
        EXPECT_EQ(polygon.Corners.size(), test.Count);
    }
}

TEST(ZigZagTriangle, Cases)
{
    using Triangles = std::vector<std::array<std::int32_t, 3>>;

    const struct
    {
        std::int32_t CornerCount;
        Triangles Expected;
    } cases[] = {
        {4, {{0, 1, 3}, {1, 2, 3}}},
        {5, {{0, 1, 4}, {1, 2, 4}, {4, 2, 3}}},
        {6, {{0, 1, 5}, {1, 2, 5}, {5, 2, 4}, {2, 3, 4}}},
        {7, {{0, 1, 6}, {1, 2, 6}, {6, 2, 5}, {2, 3, 5}, {5, 3, 4}}},
        {3, {{0, 1, 2}}},
    };

    for (const auto& test : cases) {
        Triangles triangles;
        for (std::int32_t i = 0; i < test.CornerCount - 2; ++i)
            triangles.push_back(ZigZagTriangle(i, test.CornerCount));
        EXPECT_EQ(triangles, test.Expected) << test.CornerCount;
    }
}

/// One bone per vertex, "a" for vertex 0 and so on.
struct OneBoneEach
{
    Skeleton Bones{"a", "b", "c", "d", "e", "f"};

    Mesh Make(std::uint32_t capacity)
    {
        SkinWeightTable table;
        for (Bone* bone : Bones.All())
            table.push_back({{bone, 100}});
        return MakeSkinnedMesh(std::move(table), capacity);
    }
};

std::string Describe(const SeparateDataShape& shape)
{
    std::string text;
    for (const Polygon& polygon : shape.Polygons) {
        for (const PolygonCorner& corner : CornersOf(shape, polygon))
            text += std::to_string(corner.VertexIndex);
        text += ":" + std::to_string(static_cast<int>(polygon.Mode)) +
                NamesOf(shape.BoneLists[polygon.Bones]) + " ";
    }
    return text;
}

TEST(AddPolygon, CutsWhatExceedsTheCapacity)
{
    const struct
    {
        const char* Name;
        std::uint32_t Capacity;
        std::vector<std::int32_t> Vertices;
        std::int32_t Status;
        const char* Polygons; ///< vertices, mode, bones
    } cases[] = {
        {"a triangle that fits", 3, {0, 1, 2}, 0, "012:3abc "},
        {"bones are sorted by name", 3, {2, 0, 1}, 0, "201:3abc "},
        {"a quad that fits stays whole", 4, {0, 1, 2, 3}, 0, "0123:5abcd "},
        {"a quad over the capacity is cut", 3, {0, 1, 2, 3}, 0, "013:3abd 123:3bcd "},
        {"so are five corners", 3, {0, 1, 2, 3, 4}, 0, "014:3abe 124:3bce 423:3cde "},
        {"equal bones count once", 2, {0, 0, 1, 1, 0}, 0, "00110:5ab "},
        {"a point", 1, {0}, 0, "0:0a "},
        {"a line", 2, {0, 1}, 0, "01:1ab "},
        {"a triangle over the capacity stays in the list", 2, {0, 1, 2}, 1, "012:3abc "},
        {"a line over the capacity", 1, {0, 1}, 1, "01:1ab "},
        {"cutting ends at the first triangle that exceeds", 2, {0, 0, 1, 2, 3, 3}, 1, "003:3ad 013:3abd "},
        {"and earlier", 2, {0, 1, 2, 3}, 1, "013:3abd "},
        {"capacity 0 takes nothing that is skinned", 0, {0, 1, 2}, 1, "012:3abc "},
        {"nor a quad", 0, {0, 1, 2, 3}, 1, "013:3abd "},
    };

    for (const auto& test : cases) {
        OneBoneEach skin;
        Mesh mesh = skin.Make(test.Capacity);
        EXPECT_EQ(AddVertices(mesh, 0, test.Vertices), test.Status) << test.Name;
        EXPECT_EQ(Describe(*mesh.Shapes[0]), test.Polygons) << test.Name;
        EXPECT_THAT(CheckMesh(mesh, ShapeStage::Filled), testing::IsEmpty()) << test.Name;
    }
}

TEST(AddPolygon, TellsWhyItFailed)
{
    OneBoneEach skin;
    Mesh mesh = skin.Make(1);
    const std::vector<PolygonCorner> corners{Corner(0, 0), Corner(1, 1), Corner(2, 2)};
    const GeometryResult result = AddPolygon(mesh, 0, PolygonOf(corners));
    EXPECT_EQ(result.Status, 1);
    EXPECT_EQ(result.Message, "Polygon bone size is over");
}

TEST(AddPolygon, UnskinnedPolygonsAreNeverCut)
{
    Mesh mesh = MakeMesh(0);
    EXPECT_EQ(AddVertices(mesh, 0, {0, 1, 2, 3, 4}), 0);
    EXPECT_EQ(AddVertices(mesh, 0, {0, 1, 2}), 0);
    EXPECT_EQ(Describe(*mesh.Shapes[0]), "01234:5 012:3 ");
}

TEST(AddPolygon, KeepsTheModeThatItIsGiven)
{
    Mesh mesh = MakeMesh();
    const std::vector<PolygonCorner> corners(4);
    for (const PrimitiveMode mode :
         {PrimitiveMode::TriangleStrip, PrimitiveMode::LineStrip, PrimitiveMode::Other})
        EXPECT_EQ(AddPolygon(mesh, 0, {mode, corners}).Status, 0);
    EXPECT_EQ(mesh.Shapes[0]->Polygons[0].Mode, PrimitiveMode::TriangleStrip);
    EXPECT_EQ(mesh.Shapes[0]->Polygons[1].Mode, PrimitiveMode::LineStrip);
    EXPECT_EQ(mesh.Shapes[0]->Polygons[2].Mode, PrimitiveMode::Other);
}

TEST(AddPolygon, CutPolygonsCarryAllTheirIndices)
{
    OneBoneEach skin;
    Mesh mesh = skin.Make(3);
    mesh.Pool[VertexSlot::Normal].Edit<Vector3>().resize(4);
    std::vector<PolygonCorner> corners;
    for (std::int32_t i = 0; i < 4; ++i) {
        corners.push_back(Corner(i, i));
        corners.back()[VertexSlot::Normal] = 3 - i;
    }
    EXPECT_EQ(AddPolygon(mesh, 0, PolygonOf(corners)).Status, 0);
    const SeparateDataShape& shape = *mesh.Shapes[0];
    EXPECT_EQ(CornersOf(shape, shape.Polygons[1])[1], corners[2]);
}

TEST(UpdatePolygonBones, Cases)
{
    Skeleton bones{"b", "a", "ab", "B", "\xC3"};
    const SkinWeightTable table{
        {{&bones[0], 100}, {&bones[1], 0}}, // a zero percentage counts
        {{&bones[2], 50}, {&bones[0], 50}}, {{&bones[3], 50}, {&bones[4], 50}}, {}, {{nullptr, 100}},
    };

    const struct
    {
        const char* Name;
        std::vector<std::int32_t> Vertices;
        const char* Bones;
    } cases[] = {
        {"whatever the percentage", {0}, "ab"},
        {"distinct, sorted by bytes, shorter names first", {0, 1}, "aabb"},
        {"capitals before small letters, high bytes last", {0, 1, 2}, "Baabb\xC3"},
        {"an empty entry", {3}, ""},
        {"an entry without a bone", {4}, ""},
        {"no vertex", {-1}, ""},
        {"a vertex past the table", {5, 1000000}, ""},
        {"no corners", {}, ""},
    };

    for (const auto& test : cases) {
        std::vector<PolygonCorner> corners;
        for (const std::int32_t vertex : test.Vertices)
            corners.push_back(Corner(0, vertex));
        EXPECT_EQ(NamesOf(CollectCornerBones(corners, table)), test.Bones) << test.Name;
    }
}

TEST(InsertBone, NamesakesStandSideBySideOnce)
{
    Skeleton bones{"x", "x", "x", "w", "y"};
    BoneList list;
    for (const std::size_t i : {0u, 1u, 2u, 3u, 4u, 0u, 1u, 2u, 3u, 4u})
        InsertBone(list, bones[i]);
    // A newcomer goes before its namesakes.
    EXPECT_EQ(list, (BoneList{&bones[3], &bones[2], &bones[1], &bones[0], &bones[4]}));
}

TEST(BoneListSet, NumbersDistinctLists)
{
    Skeleton bones(50);
    BoneListSet lists;
    EXPECT_EQ(lists.Count(), 1);
    EXPECT_EQ(lists.FindOrAdd({}), BoneListSet::None);
    std::vector<BoneList> added;
    for (std::size_t i = 0; i + 1 < bones.Size(); ++i) {
        added.push_back({&bones[i], &bones[i + 1]});
        EXPECT_EQ(lists.FindOrAdd(added.back()), static_cast<std::int32_t>(i) + 1);
    }
    for (std::size_t i = 0; i < added.size(); ++i) {
        EXPECT_EQ(lists.FindOrAdd(added[i]), static_cast<std::int32_t>(i) + 1);
        EXPECT_EQ(lists[static_cast<std::int32_t>(i) + 1], added[i]);
    }
    EXPECT_EQ(lists.Count(), 50);
}

TEST(AddPolygon, RandomMeshesAreSound)
{
    for (std::uint32_t seed = 0; seed < 40; ++seed) {
        Skeleton bones(12);
        const Mesh mesh =
            MakeRandomMesh({.Seed = seed, .BoneCount = seed % 2 * 12, .InfluenceCount = 4}, bones);
        EXPECT_THAT(CheckMesh(mesh, ShapeStage::Filled), testing::IsEmpty()) << "seed " << seed;
    }
}

} // namespace
} // namespace tq4x
