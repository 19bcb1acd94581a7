#include "geometry/CheckMesh.h"
#include "geometry/CloneMesh.h"
#include "geometry/EditMesh.h"
#include "geometry/SharedList.h"
#include "geometry/UpdatePolygonBones.h"
#include "support/GeometryScene.h"

namespace tq4x
{
namespace
{

using namespace test;
using S = VertexSlot;

TEST(SharedList, CopiesShareUntilOneIsEdited)
{
    SharedList<int> first(std::vector<int>{1, 2, 3});
    EXPECT_FALSE(first.IsShared());
    SharedList<int> second = first;
    EXPECT_TRUE(first.IsShared());
    EXPECT_TRUE(second.IsSharedWith(first));
    second.Edit().push_back(4);
    EXPECT_FALSE(second.IsSharedWith(first));
    EXPECT_FALSE(first.IsShared());
    EXPECT_EQ(first.Read(), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(second.Read(), (std::vector<int>{1, 2, 3, 4}));
}

TEST(SharedList, EmptyOnesShareNothing)
{
    SharedList<int> first;
    SharedList<int> second = first;
    EXPECT_TRUE(first.IsEmpty());
    EXPECT_FALSE(first.IsShared());
    EXPECT_FALSE(first.IsSharedWith(second));
    first.Edit().push_back(1);
    EXPECT_EQ(first.Size(), 1u);
    EXPECT_EQ(second.Size(), 0u);
    EXPECT_TRUE(second.Read().empty());
}

TEST(SharedList, EditingAnUnsharedListKeepsItsMemory)
{
    SharedList<int> list(std::vector<int>{1, 2});
    const int* before = list.Read().data();
    list.Edit()[0] = 5;
    EXPECT_EQ(list.Read().data(), before);
}

TEST(VertexAttributePool, Defaults)
{
    const VertexAttributePool pool =
        MakeVertexAttributePool({QuantizedMode::Short, QuantizedMode::Byte, QuantizedMode::Auto});

    const struct
    {
        S Slot;
        std::int32_t Dimension;
        QuantizedMode Mode;
        std::size_t Alternative; ///< 0 none, else components less one
    } cases[] = {
        {S::Position, 3, QuantizedMode::Short, 2},
        {S::Normal, 3, QuantizedMode::Byte, 2},
        {S::Tangent, 3, QuantizedMode::Float, 2},
        {S::Color, 4, QuantizedMode::Float, 3},
        {S::TextureCoordinate0, 2, QuantizedMode::Auto, 1},
        {S::TextureCoordinate1, 2, QuantizedMode::Auto, 1},
        {S::TextureCoordinate2, 2, QuantizedMode::Auto, 1},
        {S::BoneIndex, 4, QuantizedMode::Ubyte, 0},
        {S::BoneWeight, 4, QuantizedMode::Ubyte, 0},
        {S::UserAttribute0, 4, QuantizedMode::Byte, 3},
        {S::UserAttribute1, 4, QuantizedMode::Byte, 3},
        {S::UserAttribute2, 4, QuantizedMode::Byte, 3},
    };

    for (const auto& test : cases) {
        const VertexAttributeSlot& slot = pool[test.Slot];
        EXPECT_EQ(slot.Dimension, test.Dimension) << IndexOf(test.Slot);
        EXPECT_EQ(slot.QuantizedMode, test.Mode) << IndexOf(test.Slot);
        EXPECT_EQ(slot.Data.index(), test.Alternative) << IndexOf(test.Slot);
        EXPECT_EQ(slot.Size(), 0u) << IndexOf(test.Slot);
    }
    EXPECT_EQ(pool.OrientedBoundingBox, OrientedBoundingBox{});
}

TEST(Polygon, EmptyOnesAreOther)
{
    EXPECT_EQ(Polygon{}.Mode, PrimitiveMode::Other);
    EXPECT_EQ(Polygon{}.CornerCount, 0);
    const PolygonCorner corner;
    for (const std::int32_t entry : corner.Slots)
        EXPECT_EQ(entry, -1);
    EXPECT_EQ(corner.VertexIndex, -1);
}

TEST(PolygonCorner, VertexNumbersTakeNoPartInTheTwelve)
{
    PolygonCorner one = Corner(3, 1);
    PolygonCorner other = Corner(3, 2);
    EXPECT_EQ(one.Slots, other.Slots);
    other[S::UserAttribute2] = 0;
    EXPECT_NE(one.Slots, other.Slots);
}

TEST(SetAttributeFlag, SetsAllButTheBoneSlots)
{
    for (std::size_t i = 0; i < VertexSlotCount; ++i) {
        Mesh mesh;
        SetAttributeFlag(mesh, static_cast<S>(i), true);
        for (std::size_t j = 0; j < VertexSlotCount; ++j)
            EXPECT_EQ(mesh.AttributeFlags[j], j == i && i != 7 && i != 8) << i << " " << j;
        SetAttributeFlag(mesh, static_cast<S>(i), false);
        EXPECT_FALSE(mesh.AttributeFlags[i]) << i;
    }
}

TEST(GetOrCreateShape, TakesOverWhatTheMeshHas)
{
    Skeleton bones{"a"};
    Mesh mesh = MakeSkinnedMesh({{{&bones[0], 100}}}, 7);
    int calls = 0;
    mesh.ProgressCallback = [&] { ++calls; };
    SetAttributeFlag(mesh, S::Normal, true);
    SeparateDataShape& shape = GetOrCreateShape(mesh, 5);
    EXPECT_EQ(shape.BoneCapacity, 7u);
    EXPECT_EQ(shape.Name, "mesh");
    EXPECT_TRUE(shape.IsVisible);
    EXPECT_FALSE(shape.IsRigidSkinning);
    EXPECT_TRUE(shape.AttributeFlags[IndexOf(S::Normal)]);
    EXPECT_EQ(shape.SkinWeights, mesh.SkinWeights.get());
    EXPECT_EQ(shape.Pool[S::Position].Size(), 1u);
    shape.ProgressCallback();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(&GetOrCreateShape(mesh, 5), &shape);
    EXPECT_EQ(CountShapes(mesh), 1);
}

TEST(GetOrCreateShape, WhatComesLaterToTheMeshStaysThere)
{
    Mesh mesh = MakeMesh();
    AddVertices(mesh, 0, {0, 0, 0});
    mesh.Pool[S::Position].Edit<Vector3>().push_back({1, 2, 3});
    SetAttributeFlag(mesh, S::Color, true);
    EXPECT_EQ(mesh.Shapes[0]->Pool[S::Position].Size(), 0u);
    EXPECT_FALSE(mesh.Shapes[0]->AttributeFlags[IndexOf(S::Color)]);
}

TEST(Mesh, ShapesComeWithTheirPolygonsAndAscend)
{
    Mesh mesh = MakeMesh();
    mesh.Pool[S::Position].Edit<Vector3>().resize(1);
    EXPECT_EQ(CountShapes(mesh), 0);
    AddVertices(mesh, 9, {0, 0, 0});
    AddVertices(mesh, 2, {0, 0, 0});
    AddVertices(mesh, 9, {0, 0, 0});
    ASSERT_EQ(CountShapes(mesh), 2); // materials 0 and 5, say, have no polygons and no shapes
    EXPECT_EQ(mesh.Shapes.begin()->first, 2u);
    EXPECT_EQ(mesh.Shapes[9]->Polygons.size(), 2u);
    EXPECT_EQ(mesh.Pool[S::Position].Size(), 1u);
}

TEST(SetSkinWeights, PointsTheShapesAtTheNewTable)
{
    Skeleton bones{"a", "b"};
    Mesh mesh = MakeSkinnedMesh({{{&bones[0], 100}}});
    AddVertices(mesh, 0, {0, 0, 0});
    EXPECT_EQ(NamesOf(mesh.Shapes[0]->BoneLists[mesh.Shapes[0]->Polygons[0].Bones]), "a");
    SetSkinWeights(mesh, std::make_unique<SkinWeightTable>(SkinWeightTable{{{&bones[1], 100}}}));
    EXPECT_EQ(NamesOf(mesh.Shapes[0]->BoneLists[mesh.Shapes[0]->Polygons[0].Bones]), "b");
    EXPECT_THAT(CheckMesh(mesh, ShapeStage::Filled), testing::IsEmpty());
}

TEST(SetSkinWeights, NothingUnskinsTheMesh)
{
    Skeleton bones{"a"};
    Mesh mesh = MakeSkinnedMesh({{{&bones[0], 100}}});
    AddVertices(mesh, 0, {0, 0, 0});
    SetSkinWeights(mesh, nullptr);
    EXPECT_EQ(mesh.SkinWeights, nullptr);
    EXPECT_EQ(mesh.Shapes[0]->SkinWeights, nullptr);
    EXPECT_EQ(mesh.Shapes[0]->Polygons[0].Bones, BoneListSet::None);
    EXPECT_EQ(mesh.Shapes[0]->BoneLists.Count(), 1);
}

TEST(CloneMesh, CopiesEverything)
{
    Skeleton bones{"a", "b"};
    Mesh mesh = MakeSkinnedMesh({{{&bones[0], 60}, {&bones[1], 40}}}, 5);
    SetAttributeFlag(mesh, S::Normal, true);
    mesh.CombineGroup = 3;
    int calls = 0;
    mesh.ProgressCallback = [&] { ++calls; };
    AddVertices(mesh, 4, {0, 0, 0});
    mesh.Shapes[4]->IsVisible = false;
    mesh.Shapes[4]->IsRigidSkinning = true;
    mesh.Shapes[4]->Pool.OrientedBoundingBox.Size = {1, 2, 3};

    const std::unique_ptr<Mesh> clone = CloneMesh(mesh);
    EXPECT_EQ(clone->BoneCapacity, 5u);
    EXPECT_EQ(clone->NodeName, "mesh");
    EXPECT_EQ(clone->AttributeFlags, mesh.AttributeFlags);
    EXPECT_EQ(clone->CombineGroup, 3);
    clone->ProgressCallback();
    EXPECT_EQ(calls, 1);
    ASSERT_NE(clone->SkinWeights, nullptr);
    EXPECT_NE(clone->SkinWeights, mesh.SkinWeights);
    EXPECT_EQ(*clone->SkinWeights, *mesh.SkinWeights); // the same bones
    EXPECT_EQ(clone->Pool[S::Position].Size(), 1u);

    ASSERT_EQ(clone->Shapes.count(4), 1u);
    const SeparateDataShape& shape = *clone->Shapes[4];
    EXPECT_EQ(shape.SkinWeights, clone->SkinWeights.get());
    EXPECT_FALSE(shape.IsVisible);
    EXPECT_TRUE(shape.IsRigidSkinning);
    EXPECT_EQ(shape.Pool.OrientedBoundingBox.Size, (Vector3{1, 2, 3}));
    EXPECT_EQ(shape.Corners, mesh.Shapes[4]->Corners);
    EXPECT_EQ(shape.Polygons, mesh.Shapes[4]->Polygons);
    EXPECT_EQ(NamesOf(shape.BoneLists[shape.Polygons[0].Bones]), "ab");
    clone->Shapes[4]->IsRigidSkinning = false; // its vertex has two bones
    EXPECT_THAT(CheckMesh(*clone, ShapeStage::Filled), testing::IsEmpty());
}

TEST(CloneMesh, ChangesOfTheCopyStayThere)
{
    Mesh mesh = MakeMesh();
    mesh.Pool[S::Position].Edit<Vector3>().resize(1);
    AddVertices(mesh, 0, {0, 0, 0});
    const std::unique_ptr<Mesh> clone = CloneMesh(mesh);
    EXPECT_EQ(clone->SkinWeights, nullptr);
    clone->Shapes[0]->Pool[S::Position].Edit<Vector3>()[0] = {1, 1, 1};
    clone->Pool[S::Position].Edit<Vector3>().clear();
    clone->Shapes[0]->Corners.clear();
    EXPECT_EQ(mesh.Shapes[0]->Pool[S::Position].Read<Vector3>()[0], Vector3{});
    EXPECT_EQ(mesh.Pool[S::Position].Size(), 1u);
    EXPECT_EQ(mesh.Shapes[0]->Corners.size(), 3u);
}

TEST(CloneShape, IntoAnUnskinnedMesh)
{
    Skeleton bones{"a"};
    Mesh mesh = MakeSkinnedMesh({{{&bones[0], 100}}});
    AddVertices(mesh, 0, {0, 0, 0});
    EXPECT_EQ(CloneShape(*mesh.Shapes[0], nullptr)->SkinWeights, nullptr);
}

TEST(ForEachPolygon, VisitsPolygonsBeforeAndAfterTheyAreInSets)
{
    SeparateDataShape shape;
    shape.Polygons = {{PrimitiveMode::Points, 1}, {PrimitiveMode::Lines, 2}};
    std::vector<PrimitiveMode> modes;
    const auto collect = [&](const Polygon& polygon) { modes.push_back(polygon.Mode); };
    ForEachPolygon(std::as_const(shape), collect);
    EXPECT_EQ(modes, (std::vector{PrimitiveMode::Points, PrimitiveMode::Lines}));

    modes.clear();
    shape.PrimitiveSets = {{{}, {{PrimitiveMode::Triangles, 3}}, {}}, {{}, {{PrimitiveMode::Other}}, {}}};
    shape.Polygons.clear();
    ForEachPolygon(shape, collect);
    EXPECT_EQ(modes, (std::vector{PrimitiveMode::Triangles, PrimitiveMode::Other}));
}

} // namespace
} // namespace tq4x
