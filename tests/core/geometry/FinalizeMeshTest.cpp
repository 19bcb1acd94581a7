#include "geometry/FinalizeMesh.h"
#include "geometry/CheckMesh.h"
#include "geometry/CloneMesh.h"
#include "support/GeometryScene.h"

#include <algorithm>

namespace tq4x
{
namespace
{

using namespace test;
using S = VertexSlot;

TEST(FinalizeMesh, TrianglesOfTwoMaterials)
{
    Mesh mesh = MakeMesh();
    mesh.Pool[S::Position].Edit<Vector3>() = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 0, 0}, {5, 0, 0}};
    AddVertices(mesh, 1, {0, 1, 2});
    AddVertices(mesh, 0, {2, 3, 4});
    AddVertices(mesh, 1, {2, 3, 0});
    EXPECT_TRUE(FinalizeMesh(mesh));
    EXPECT_THAT(CheckMesh(mesh, ShapeStage::Finalized), testing::IsEmpty());

    const SeparateDataShape& first = *mesh.Shapes[0];
    EXPECT_EQ(first.Pool[S::Position].Read<Vector3>(),
              (std::vector<Vector3>{{1, 0, 0}, {0, 1, 0}, {5, 0, 0}}));
    ASSERT_EQ(first.PrimitiveSets.size(), 1u);
    EXPECT_EQ(first.PrimitiveSets[0].Polygons, (std::vector<Polygon>{{PrimitiveMode::Triangles, 3, 0}}));
    EXPECT_TRUE(first.PrimitiveSets[0].BoneIndexTable.empty());
    EXPECT_NE(first.Pool.OrientedBoundingBox, OrientedBoundingBox{});

    const SeparateDataShape& second = *mesh.Shapes[1];
    EXPECT_EQ(second.Pool[S::Position].Size(), 3u);
    EXPECT_EQ(second.PrimitiveSets[0].Polygons, (std::vector<Polygon>{{PrimitiveMode::Triangles, 6, 0}}));
    std::vector<std::int32_t> positions;
    for (const PolygonCorner& corner : second.Corners)
        positions.push_back(corner[S::Position]);
    EXPECT_EQ(positions, (std::vector<std::int32_t>{0, 1, 2, 2, 1, 0}));
    EXPECT_EQ(mesh.Pool[S::Position].Size(), 5u); // the template stays
}

TEST(FinalizeMesh, AMeshWithoutShapesIsFine)
{
    Mesh mesh = MakeMesh();
    EXPECT_TRUE(FinalizeMesh(mesh));
}

TEST(FinalizeMesh, WithoutPositionsTheBoxStaysAsItWas)
{
    Mesh mesh = MakeMesh();
    AddVertices(mesh, 0, {-1, -1, -1});
    EXPECT_TRUE(FinalizeMesh(mesh));
    EXPECT_EQ(mesh.Shapes[0]->Pool.OrientedBoundingBox, OrientedBoundingBox{});
}

TEST(FinalizeMesh, BoneSlotsAreFilledInSkinnedShapesOnly)
{
    Skeleton bones{"a", "b"};
    Mesh skinned = MakeSkinnedMesh({{{&bones[0], 50}, {&bones[1], 50}}});
    AddVertices(skinned, 0, {0, 0, 0});
    EXPECT_TRUE(FinalizeMesh(skinned));
    EXPECT_EQ(skinned.Shapes[0]->Corners[0][S::BoneIndex], 0);
    EXPECT_EQ(skinned.Shapes[0]->Corners[0][S::BoneWeight], 0);
    EXPECT_EQ(skinned.Shapes[0]->PrimitiveSets[0].BoneIndexTable, (std::vector<std::int32_t>{0, 1}));

    Mesh unskinned = MakeMesh();
    AddVertices(unskinned, 0, {-1, -1, -1});
    EXPECT_TRUE(FinalizeMesh(unskinned));
    EXPECT_EQ(unskinned.Shapes[0]->Corners[0][S::BoneIndex], -1);
}

TEST(FinalizeShape, ProgressIsToldOnceBeforeMerging)
{
    const struct
    {
        const char* Name;
        std::vector<std::vector<std::int32_t>> Triangles;
        int Calls;
    } cases[] = {
        {"one set", {{0, 0, 0}, {0, 0, 0}}, 0},
        {"two sets", {{0, 0, 0}, {1, 1, 1}}, 1},
        {"three sets", {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}}, 1},
    };

    for (const auto& test : cases) {
        Skeleton bones{"a", "b", "c"};
        Mesh mesh = MakeSkinnedMesh({{{&bones[0], 100}}, {{&bones[1], 100}}, {{&bones[2], 100}}}, 2);
        int calls = 0;
        mesh.ProgressCallback = [&] { ++calls; };
        for (const auto& triangle : test.Triangles)
            AddVertices(mesh, 0, triangle);
        EXPECT_EQ(FinalizeShape(*mesh.Shapes[0]).Status, 0) << test.Name;
        EXPECT_EQ(calls, test.Calls) << test.Name;
    }
}

TEST(FinalizeShape, SetsWithoutACallbackMergeAllTheSame)
{
    Skeleton bones{"a", "b", "c"};
    Mesh mesh = MakeSkinnedMesh({{{&bones[0], 100}}, {{&bones[1], 100}}, {{&bones[2], 100}}}, 2);
    for (std::int32_t i = 0; i < 3; ++i)
        AddVertices(mesh, 0, {i, i, i});
    EXPECT_EQ(FinalizeShape(*mesh.Shapes[0]).Status, 0);
    ASSERT_EQ(mesh.Shapes[0]->PrimitiveSets.size(), 2u);
    EXPECT_EQ(NamesOf(mesh.Shapes[0]->PrimitiveSets[0].Palette), "ab");
    EXPECT_EQ(NamesOf(mesh.Shapes[0]->PrimitiveSets[1].Palette), "c");
}

TEST(FinalizeMesh, SurvivesWhatTheCollectorWouldHaveGivenUp)
{
    const struct
    {
        const char* Name;
        std::uint32_t Capacity;
        std::int32_t BoneIndex; ///< of all bones but the first
    } cases[] = {
        {"polygons over the capacity", 2, 1},
        {"no capacity at all", 0, 1},
        {"bones outside the bone list", 20, -1},
        {"both", 1, -1},
    };

    for (const auto& test : cases) {
        Skeleton bones(8);
        for (std::size_t i = 1; i < bones.Size(); ++i)
            bones[i].BoneIndex = test.BoneIndex < 0 ? -1 : static_cast<std::int32_t>(i);
        SkinWeightTable table;
        for (Bone* bone : bones.All())
            table.push_back({{bone, 50}, {&bones[0], 50}});
        Mesh mesh = MakeSkinnedMesh(std::move(table), test.Capacity);
        for (std::int32_t i = 0; i + 2 < 8; ++i)
            AddVertices(mesh, 0, {i, i + 1, i + 2});
        EXPECT_TRUE(FinalizeMesh(mesh)) << test.Name;
        const SeparateDataShape& shape = *mesh.Shapes[0];
        EXPECT_EQ(shape.Corners.size(), 18u) << test.Name;
        for (const PrimitiveSet& set : shape.PrimitiveSets)
            EXPECT_LE(set.BoneIndexTable.size(), test.Capacity) << test.Name;
        for (const PolygonCorner& corner : shape.Corners)
            EXPECT_GE(corner[S::BoneIndex], 0) << test.Name;
    }
}

/// What a vertex is made of, its weights by bone and not by place in a table.
std::string DescribeVertex(const SeparateDataShape& shape, const PrimitiveSet* set,
                           const PolygonCorner& corner)
{
    std::map<std::int32_t, float> weights;
    if (set && shape.SkinWeights) {
        const Vector4& tuple = shape.BoneWeightTuples.at(static_cast<std::size_t>(corner[S::BoneWeight]));
        const float components[] = {tuple.X, tuple.Y, tuple.Z, tuple.W};
        for (std::size_t i = 0; i < 4; ++i)
            if (components[i] != 0.0f) {
                const std::int32_t place =
                    shape.BoneIndexTuples.at(static_cast<std::size_t>(corner[S::BoneIndex]))[i];
                weights[set->BoneIndexTable.at(static_cast<std::size_t>(place))] += components[i];
            }
    } else if (shape.SkinWeights) {
        for (const SkinInfluence& influence : InfluencesOf(*shape.SkinWeights, corner))
            if (influence.Percentage != 0)
                weights[influence.Bone->BoneIndex] += static_cast<float>(influence.Percentage / 100.0);
    }
    std::string text = ExpandCorner(shape, corner);
    for (const auto& [bone, weight] : weights)
        text += " " + std::to_string(bone) + ":" + std::to_string(weight);
    return text;
}

/// The polygons as texts, in any order; triangles one by one.
std::vector<std::string> DescribePolygons(const SeparateDataShape& shape)
{
    std::vector<std::string> texts;
    const auto add = [&](const PrimitiveSet* set, const Polygon& polygon) {
        const std::size_t step = polygon.Mode == PrimitiveMode::Triangles ? 3
                                 : polygon.Mode == PrimitiveMode::Lines   ? 2
                                 : polygon.Mode == PrimitiveMode::Points
                                     ? 1
                                     : static_cast<std::size_t>(polygon.CornerCount);
        const auto corners = CornersOf(shape, polygon);
        for (std::size_t i = 0; i < corners.size(); i += step) {
            std::string text = std::to_string(static_cast<int>(polygon.Mode));
            for (const PolygonCorner& corner : corners.subspan(i, step))
                text += "/" + DescribeVertex(shape, set, corner);
            texts.push_back(text);
        }
    };
    for (const Polygon& polygon : shape.Polygons)
        add(nullptr, polygon);
    for (const PrimitiveSet& set : shape.PrimitiveSets)
        for (const Polygon& polygon : set.Polygons)
            add(&set, polygon);
    std::sort(texts.begin(), texts.end());
    return texts;
}

TEST(FinalizeMesh, LosesNoPolygonAndChangesNoVertex)
{
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Skeleton bones(14);
        RandomMeshSettings settings{
            .Seed = seed, .DistinctValues = 5, .InfluenceCount = 1 + static_cast<std::int32_t>(seed % 4)};
        settings.BoneCount = seed % 3 == 0 ? 0 : 14;
        settings.BoneCapacity = 12 + seed % 5;
        Mesh mesh = MakeRandomMesh(settings, bones);
        std::map<std::uint32_t, std::vector<std::string>> before;
        for (const auto& [material, shape] : mesh.Shapes)
            before[material] = DescribePolygons(*shape);
        EXPECT_TRUE(FinalizeMesh(mesh));
        EXPECT_THAT(CheckMesh(mesh, ShapeStage::Finalized), testing::IsEmpty());
        for (const auto& [material, shape] : mesh.Shapes)
            ASSERT_EQ(DescribePolygons(*shape), before[material]) << "material " << material;
    }
}

TEST(FinalizeMesh, AClonedMeshComesOutTheSame)
{
    Skeleton bones(10);
    Mesh mesh = MakeRandomMesh(
        {.Seed = 5, .BoneCount = 10, .InfluenceCount = 3, .BoneCapacity = 12, .HasOddValues = false}, bones);
    const std::unique_ptr<Mesh> clone = CloneMesh(mesh);
    EXPECT_TRUE(FinalizeMesh(mesh));
    EXPECT_TRUE(FinalizeMesh(*clone));
    for (const auto& [material, shape] : mesh.Shapes) {
        const SeparateDataShape& other = *clone->Shapes[material];
        EXPECT_EQ(shape->Corners, other.Corners);
        EXPECT_EQ(shape->Pool[S::Position].Read<Vector3>(), other.Pool[S::Position].Read<Vector3>());
        EXPECT_EQ(shape->Pool.OrientedBoundingBox, other.Pool.OrientedBoundingBox);
    }
}

} // namespace
} // namespace tq4x
