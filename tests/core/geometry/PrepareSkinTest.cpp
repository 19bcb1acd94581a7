#include "geometry/PrepareSkin.h"
#include "geometry/BuildMeshEntries.h"
#include "geometry/CheckMesh.h"
#include "geometry/CloneMesh.h"
#include "geometry/FinalizeMesh.h"
#include "geometry/MarkNeededBones.h"
#include "geometry/TransformShape.h"
#include "geometry/UpdatePolygonBones.h"
#include "scene/NodeMatrices.h"
#include "support/GeometryScene.h"

#include <algorithm>

namespace tq4x
{
namespace
{

using namespace test;
using S = VertexSlot;

Matrix44 Translation(float x, float y, float z)
{
    return ComposeMatrix({{1, 1, 1}, {}, {x, y, z}});
}

void SetBindPose(Bone& bone, const Matrix44& matrix)
{
    bone.HasSkinningMatrix = true;
    bone.BindMatrix = matrix;
}

const std::vector<Vector3>& ValuesOf(Mesh& mesh, std::uint32_t material, S slot)
{
    return mesh.Shapes[material]->Pool[slot].Read<Vector3>();
}

TEST(TransformShape, MovesPositionsAndTurnsDirections)
{
    Mesh mesh = MakeMesh();
    for (const S slot : {S::Position, S::Normal, S::Tangent})
        mesh.Pool[slot].Edit<Vector3>() = {{1, 0, 0}, {0, 2, 0}};
    mesh.Pool[S::Color].Edit<Vector4>() = {{1, 2, 3, 4}};
    AddVertices(mesh, 0, {0, 1, 1});
    TransformShape(*mesh.Shapes[0], ComposeMatrix({{3, 1, 1}, {}, {10, 20, 30}}));
    EXPECT_EQ(ValuesOf(mesh, 0, S::Position), (std::vector<Vector3>{{13, 20, 30}, {10, 22, 30}}));
    // A scaled matrix leaves directions longer than 1.
    EXPECT_EQ(ValuesOf(mesh, 0, S::Normal), (std::vector<Vector3>{{3, 0, 0}, {0, 2, 0}}));
    EXPECT_EQ(ValuesOf(mesh, 0, S::Tangent), (std::vector<Vector3>{{3, 0, 0}, {0, 2, 0}}));
    EXPECT_EQ(mesh.Shapes[0]->Pool[S::Color].Read<Vector4>()[0], (Vector4{1, 2, 3, 4}));
    EXPECT_EQ(mesh.Pool[S::Position].Read<Vector3>()[0], (Vector3{1, 0, 0})); // the template stays
}

TEST(TransformShapes, SharedValuesMoveOnceAndStayShared)
{
    Mesh mesh = MakeMesh();
    mesh.Pool[S::Position].Edit<Vector3>() = {{1, 0, 0}};
    std::vector<SeparateDataShape*> shapes;
    for (const std::uint32_t material : {0u, 1u, 2u}) {
        AddVertices(mesh, material, {0, 0, 0});
        shapes.push_back(mesh.Shapes[material].get());
    }
    mesh.Shapes[1]->Pool[S::Position].Edit<Vector3>()[0].Y = 5;
    TransformShapes(shapes, Translation(1, 1, 1));
    EXPECT_EQ(ValuesOf(mesh, 0, S::Position)[0], (Vector3{2, 1, 1}));
    EXPECT_EQ(ValuesOf(mesh, 1, S::Position)[0], (Vector3{2, 6, 1}));
    EXPECT_EQ(ValuesOf(mesh, 0, S::Position).data(), ValuesOf(mesh, 2, S::Position).data());
}

TEST(TransformRigid, EachValueMovesOnceWithItsFirstBone)
{
    Skeleton bones{"a", "b", "c"};
    bones[2].BoneIndex = -1;
    Mesh mesh = MakeSkinnedMesh(
        {{{&bones[0], 100}}, {{&bones[0], 0}, {nullptr, 50}, {&bones[1], 50}}, {{&bones[2], 100}}, {}});
    mesh.Pool[S::Position].Edit<Vector3>().resize(8);
    mesh.Pool[S::Normal].Edit<Vector3>() = {{0, 0, 1}, {0, 0, 1}};

    const struct
    {
        std::int32_t Position;
        std::int32_t Normal;
        std::int32_t Vertex;
    } corners[] = {{0, 0, 0},  {0, 0, 1}, {1, 0, 1},   {2, -1, 2}, {3, 1, 3},
                   {4, 1, -1}, {5, 1, 9}, {-1, -1, 0}, {6, 1, 1}};

    std::vector<PolygonCorner> polygon;
    for (const auto& corner : corners) {
        polygon.push_back(Corner(corner.Position, corner.Vertex));
        polygon.back()[S::Normal] = corner.Normal;
    }
    static_cast<void>(AddPolygon(mesh, 0, PolygonOf(polygon)));
    const Matrix44 matrices[] = {ComposeMatrix({{1, 1, 2}, {}, {1, 0, 0}}),
                                 ComposeMatrix({{1, 1, 3}, {}, {0, 1, 0}})};
    TransformRigid(*mesh.Shapes[0], matrices);
    EXPECT_EQ(ValuesOf(mesh, 0, S::Position),
              (std::vector<Vector3>{{1, 0, 0}, // bone a, though b uses it too
                                    {0, 1, 0}, // the first influence above 0 that has a bone
                                    {},        // a bone without a number
                                    {},        // no influences
                                    {},        // no vertex
                                    {},        // a vertex past the table
                                    {0, 1, 0},
                                    {}})); // in no polygon
    EXPECT_EQ(ValuesOf(mesh, 0, S::Normal), (std::vector<Vector3>{{0, 0, 2}, {0, 0, 3}}));
}

/// A mesh on a node of its own, with a rigid shape (material 0) and a smooth one (material 1). Vertex 0 goes
/// with bone a, 1 with b, 2 with both.
struct TwoShapes
{
    TwoShapes()
    {
        SetBindPose(Bones[0], Translation(1, 0, 0));
        SetBindPose(Bones[1], Translation(0, 2, 0));
        SetBindPose(Bones[2], Translation(0, 0, 4));
        Object = MakeSkinnedMesh(
            {{{&Bones[0], 100}, {&Bones[1], 0}}, {{&Bones[1], 100}}, {{&Bones[0], 50}, {&Bones[1], 50}}});
        Object.Pool[S::Position].Edit<Vector3>() = {{10, 0, 0}, {20, 0, 0}, {30, 0, 0}};
        Object.Pool[S::Normal].Edit<Vector3>() = {{0, 0, 1}};
        AddVertices(Object, 0, {0, 1, 1});
        AddVertices(Object, 1, {0, 1, 2});
        MeshBone().Mesh = &Object;
    }

    Bone& MeshBone() { return Bones[2]; }

    Skeleton Bones{"a", "b", "node"};
    Mesh Object;
};

TEST(PrepareSkin, RigidShapesGoToBoneSpaceSmoothOnesToWorldSpace)
{
    for (const AdjustSkinning adjust : {AdjustSkinning::None, AdjustSkinning::RigidSkinning}) {
        TwoShapes scene;
        PrepareSkin(scene.Object, scene.MeshBone(), adjust);
        EXPECT_TRUE(scene.Object.Shapes[0]->IsRigidSkinning);
        EXPECT_FALSE(scene.Object.Shapes[1]->IsRigidSkinning);
        // Mesh to world is (0, 0, 4); world to bone takes the bone's place away. The last value is not used.
        EXPECT_EQ(ValuesOf(scene.Object, 0, S::Position),
                  (std::vector<Vector3>{{9, 0, 4}, {20, -2, 4}, {30, 0, 0}}));
        EXPECT_EQ(ValuesOf(scene.Object, 1, S::Position),
                  (std::vector<Vector3>{{10, 0, 4}, {20, 0, 4}, {30, 0, 4}}));
        EXPECT_EQ(scene.Object.Pool[S::Position].Read<Vector3>()[0], (Vector3{10, 0, 0}));
        EXPECT_THAT(CheckMesh(scene.Object, ShapeStage::Filled), testing::IsEmpty());
    }
}

TEST(PrepareSkin, EntriesOfRigidVerticesKeepTheirOneInfluence)
{
    TwoShapes scene;
    PrepareSkin(scene.Object, scene.MeshBone(), AdjustSkinning::None);
    const SkinWeightTable& table = *scene.Object.SkinWeights;
    EXPECT_EQ(table[0], (SkinWeightEntry{{&scene.Bones[0], 100}})); // the 0 percent of b is gone
    EXPECT_EQ(table[2].size(), 2u);                                 // of the smooth shape alone
    // The bones of all polygons follow the table that was cut.
    const SeparateDataShape& rigid = *scene.Object.Shapes[0];
    EXPECT_EQ(NamesOf(rigid.BoneLists[rigid.Polygons[0].Bones]), "ab");
}

TEST(PrepareSkin, ZeroPercentBonesLeaveThePolygonsOfARigidShape)
{
    Skeleton bones{"a", "b", "node"};
    Mesh mesh = MakeSkinnedMesh({{{&bones[0], 100}, {&bones[1], 0}}});
    AddVertices(mesh, 0, {0, 0, 0});
    const SeparateDataShape& shape = *mesh.Shapes[0];
    EXPECT_EQ(NamesOf(shape.BoneLists[shape.Polygons[0].Bones]), "ab");
    PrepareSkin(mesh, bones[2], AdjustSkinning::RigidSkinning);
    EXPECT_EQ(NamesOf(shape.BoneLists[shape.Polygons[0].Bones]), "a");
    FinalizeMesh(mesh);
    EXPECT_EQ(shape.PrimitiveSets[0].BoneIndexTable, (std::vector<std::int32_t>{0}));
}

TEST(PrepareSkin, WhatMakesAShapeRigid)
{
    Skeleton bones{"a", "b", "node"};
    Bone& a = bones[0];
    Bone& b = bones[1];

    const struct
    {
        const char* Name;
        SkinWeightTable Table;
        std::vector<std::int32_t> Vertices;
        bool Expected;
    } cases[] = {
        {"one bone each", {{{&a, 100}}, {{&b, 100}}}, {0, 1}, true},
        {"others at 0 percent", {{{&a, 0}, {&b, 100}}}, {0}, true},
        {"others below 0", {{{&a, -1}, {&b, 101}}}, {0}, true},
        {"two bones in one vertex", {{{&a, 50}, {&b, 50}}, {{&b, 100}}}, {0, 1}, false},
        {"the same bone twice", {{{&a, 50}, {&a, 50}}}, {0}, false},
        {"a vertex without influences", {{}, {{&b, 100}}}, {0, 1}, false},
        {"a smooth vertex of another shape", {{{&a, 50}, {&b, 50}}, {{&b, 100}}}, {1}, true},
        {"no vertices at all", {{{&a, 50}, {&b, 50}}}, {-1}, true},
        {"a vertex past the table", {{{&a, 50}, {&b, 50}}}, {5}, true},
    };

    for (const auto& test : cases) {
        Mesh mesh = MakeSkinnedMesh(test.Table);
        AddVertices(mesh, 0, test.Vertices);
        PrepareSkin(mesh, bones[2], AdjustSkinning::RigidSkinning);
        EXPECT_EQ(mesh.Shapes[0]->IsRigidSkinning, test.Expected) << test.Name;
    }
}

TEST(PrepareSkin, AnUnskinnedMeshIsLeftAlone)
{
    for (const AdjustSkinning adjust : {AdjustSkinning::None, AdjustSkinning::RigidSkinning}) {
        Skeleton bones{"node"};
        SetBindPose(bones[0], Translation(1, 2, 3));
        Mesh mesh = MakeMesh();
        mesh.Pool[S::Position].Edit<Vector3>() = {{7, 0, 0}};
        AddVertices(mesh, 0, {0, 0, 0});
        bones[0].Mesh = &mesh;
        PrepareSkin(mesh, bones[0], adjust);
        EXPECT_EQ(ValuesOf(mesh, 0, S::Position)[0], (Vector3{7, 0, 0}));
        EXPECT_FALSE(mesh.Shapes[0]->IsRigidSkinning);
        EXPECT_EQ(bones[0].Mesh, &mesh);
    }
}

TEST(PrepareSkin, TheOptionDecidesWhetherASingleBoneMeshMoves)
{
    const struct
    {
        AdjustSkinning Adjust;
        bool IsMoved;
    } cases[] = {{AdjustSkinning::None, true},
                 {AdjustSkinning::RigidSkinning, false},
                 {static_cast<AdjustSkinning>(2), true}};

    for (const auto& test : cases) {
        Skeleton bones{"a", "node"};
        Mesh mesh = MakeSkinnedMesh({{{&bones[0], 100}}});
        AddVertices(mesh, 0, {0, 0, 0});
        bones[1].Mesh = &mesh;
        PrepareSkin(mesh, bones[1], test.Adjust);
        EXPECT_EQ(bones[0].Mesh == &mesh, test.IsMoved);
        EXPECT_EQ(bones[1].Mesh == &mesh, !test.IsMoved);
        EXPECT_EQ(mesh.SkinWeights == nullptr, test.IsMoved);
        EXPECT_EQ(mesh.Shapes[0]->IsRigidSkinning, !test.IsMoved);
    }
}

TEST(PrepareSkins, AMeshOfTwoBonesIsTreatedOnceWithTheFirst)
{
    TwoShapes scene;
    Bone& second = scene.Bones.Add("other");
    SetBindPose(second, Translation(100, 100, 100));
    second.Mesh = &scene.Object;
    const std::vector<Bone*> bones = scene.Bones.All();
    PrepareSkins(bones, AdjustSkinning::None);
    EXPECT_EQ(ValuesOf(scene.Object, 0, S::Position)[0], (Vector3{9, 0, 4}));
    EXPECT_EQ(ValuesOf(scene.Object, 1, S::Position)[0], (Vector3{10, 0, 4}));
}

/// Steps one by one: an inverse per vertex, a walk over all corners with three tables of finished values.
void PrepareByTheLetter(Mesh& mesh, const Bone& meshBone)
{
    for (auto& [material, shape] : mesh.Shapes) {
        SkinWeightTable& table = *mesh.SkinWeights;
        std::vector<std::size_t> vertices;
        for (const PolygonCorner& corner : shape->Corners)
            vertices.push_back(static_cast<std::size_t>(corner.VertexIndex));
        std::sort(vertices.begin(), vertices.end());
        vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
        const auto hasShare = [](const SkinInfluence& influence) { return influence.Percentage > 0; };
        bool isRigid = true;
        for (const std::size_t vertex : vertices)
            isRigid = isRigid && std::count_if(table[vertex].begin(), table[vertex].end(), hasShare) == 1;
        if (!isRigid) {
            for (Vector3& position : shape->Pool[S::Position].Edit<Vector3>())
                position = TransformPoint(position, GetBindGlobalMatrix(meshBone));
            for (Vector3& normal : shape->Pool[S::Normal].Edit<Vector3>())
                normal = TransformDirection(normal, GetBindGlobalMatrix(meshBone));
            continue;
        }
        std::vector<bool> isPositionDone(shape->Pool[S::Position].Size());
        std::vector<bool> isNormalDone(shape->Pool[S::Normal].Size());
        for (const std::size_t vertex : vertices)
            table[vertex] = {*std::find_if(table[vertex].begin(), table[vertex].end(), hasShare)};
        for (const PolygonCorner& corner : shape->Corners) {
            const Bone* bone = table[static_cast<std::size_t>(corner.VertexIndex)][0].Bone;
            const Matrix44 matrix =
                Multiply(GetBindGlobalMatrix(meshBone), InvertMatrix(GetBindGlobalMatrix(*bone)));
            const auto position = static_cast<std::size_t>(corner[S::Position]);
            Vector3& point = shape->Pool[S::Position].Edit<Vector3>()[position];
            if (!isPositionDone[position])
                point = TransformPoint(point, matrix);
            isPositionDone[position] = true;
            if (corner[S::Normal] < 0)
                continue;
            const auto normal = static_cast<std::size_t>(corner[S::Normal]);
            Vector3& direction = shape->Pool[S::Normal].Edit<Vector3>()[normal];
            if (!isNormalDone[normal])
                direction = TransformDirection(direction, matrix);
            isNormalDone[normal] = true;
        }
        shape->IsRigidSkinning = true;
    }
}

TEST(PrepareSkin, AgreesWithTheStepsOneByOne)
{
    int rigidShapes = 0;
    for (std::uint32_t seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Skeleton bones(9);
        Bone& meshBone = bones.Add("node");
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> number(-2.0f, 2.0f);
        for (Bone* bone : bones.All())
            SetBindPose(*bone,
                        ComposeMatrix(
                            {{1, 1, 2}, {40 * number(random), 20, 0}, {number(random), 1, number(random)}}));
        // Few polygons, so that some shapes have vertices of one bone alone.
        Mesh mesh = MakeRandomMesh({.Seed = seed,
                                    .PolygonCount = 6,
                                    .BoneCount = 9,
                                    .InfluenceCount = seed % 3 == 0 ? 2 : 1,
                                    .HasOddValues = false},
                                   bones);
        const std::unique_ptr<Mesh> literal = CloneMesh(mesh);
        PrepareSkin(mesh, meshBone, AdjustSkinning::RigidSkinning);
        PrepareByTheLetter(*literal, meshBone);
        EXPECT_EQ(*mesh.SkinWeights, *literal->SkinWeights);
        for (const auto& [material, shape] : mesh.Shapes) {
            EXPECT_EQ(shape->IsRigidSkinning, literal->Shapes[material]->IsRigidSkinning);
            EXPECT_EQ(BytesOf(ValuesOf(mesh, material, S::Position)),
                      BytesOf(ValuesOf(*literal, material, S::Position)));
            EXPECT_EQ(BytesOf(ValuesOf(mesh, material, S::Normal)),
                      BytesOf(ValuesOf(*literal, material, S::Normal)));
            rigidShapes += shape->IsRigidSkinning ? 1 : 0;
        }
        EXPECT_THAT(CheckMesh(mesh, ShapeStage::Filled), testing::IsEmpty());
    }
    EXPECT_GT(rigidShapes, 20);
}

TEST(BuildMeshEntries, OneEntryPerOutputBoneWithAMesh)
{
    Skeleton bones{"a", "b", "c", "d", "e"};
    SkeletalModelWriter content;
    for (const int shapes : {2, 0, 1}) {
        content.Meshes.push_back(std::make_unique<Mesh>(MakeMesh()));
        for (int i = 0; i < shapes; ++i)
            AddVertices(*content.Meshes.back(), static_cast<std::uint32_t>(i), {-1});
    }
    bones[0].Mesh = content.Meshes[0].get();
    bones[2].Mesh = content.Meshes[1].get();
    bones[3].Mesh = content.Meshes[2].get();
    bones[4].Mesh = content.Meshes[2].get();
    bones[3].IsOutput = false;
    content.Bones = bones.All();
    BuildMeshEntries(content);
    ASSERT_EQ(content.MeshEntries.size(), 3u);
    EXPECT_EQ(content.MeshEntries[0].Bone, &bones[0]);
    EXPECT_EQ(content.MeshEntries[0].FirstShapeIndex, 0);
    EXPECT_EQ(content.MeshEntries[1].Mesh, bones[2].Mesh); // a mesh without shapes counts as an entry
    EXPECT_EQ(content.MeshEntries[1].FirstShapeIndex, 2);
    EXPECT_EQ(content.MeshEntries[2].Bone, &bones[4]);
    EXPECT_EQ(content.MeshEntries[2].FirstShapeIndex, 2);
    EXPECT_EQ(content.Meshes.size(), 3u);
}

TEST(BuildMeshEntries, AMeshOfTwoBonesIsClonedForTheSecond)
{
    Skeleton bones{"a", "b", "c"};
    SkeletalModelWriter content;
    content.Meshes.push_back(std::make_unique<Mesh>(MakeMesh()));
    Mesh& mesh = *content.Meshes[0];
    mesh.NodeName = "a";
    AddVertices(mesh, 0, {-1});
    AddVertices(mesh, 3, {-1});
    for (Bone* bone : bones.All())
        bone->Mesh = &mesh;
    content.Bones = bones.All();
    BuildMeshEntries(content);
    ASSERT_EQ(content.MeshEntries.size(), 3u);
    EXPECT_EQ(content.MeshEntries[0].Mesh, &mesh);
    EXPECT_NE(content.MeshEntries[1].Mesh, &mesh);
    EXPECT_NE(content.MeshEntries[2].Mesh, content.MeshEntries[1].Mesh);
    EXPECT_EQ(content.MeshEntries[1].Mesh->NodeName, "a");
    EXPECT_EQ(content.MeshEntries[1].FirstShapeIndex, 2);
    EXPECT_EQ(content.MeshEntries[2].FirstShapeIndex, 4);
    EXPECT_EQ(content.Meshes.size(), 3u);
    EXPECT_EQ(CountShapes(*content.MeshEntries[2].Mesh), 2);
}

TEST(BuildMeshEntries, CloneOfAPreparedMeshStaysRigid)
{
    TwoShapes scene;
    SkeletalModelWriter content;
    content.Meshes.push_back(std::make_unique<Mesh>(std::move(scene.Object)));
    scene.Bones[0].Mesh = content.Meshes[0].get();
    scene.Bones[2].Mesh = content.Meshes[0].get();
    content.Bones = scene.Bones.All();
    PrepareSkins(content.Bones, AdjustSkinning::None);
    BuildMeshEntries(content);
    ASSERT_EQ(content.MeshEntries.size(), 2u);
    Mesh& clone = *content.MeshEntries[1].Mesh;
    EXPECT_TRUE(clone.Shapes[0]->IsRigidSkinning);
    EXPECT_EQ(clone.Shapes[0]->SkinWeights, clone.SkinWeights.get());
    EXPECT_EQ(ValuesOf(clone, 0, S::Position), ValuesOf(*content.Meshes[0], 0, S::Position));
}

TEST(MarkNeededBones, AnUnskinnedMeshNeedsItsOwnBone)
{
    Skeleton bones{"a", "b"};
    Mesh mesh = MakeMesh();
    MarkNeededBones(mesh, bones[0]);
    EXPECT_TRUE(bones[0].IsNeededRendering);
    EXPECT_EQ(bones[0].SkinOwner, nullptr);
    EXPECT_FALSE(bones[1].IsNeededRendering);
}

TEST(MarkNeededBones, ASkinnedMeshNeedsItsInfluences)
{
    Skeleton bones{"a", "b", "c", "unused", "node"};
    Mesh mesh = MakeSkinnedMesh(
        {{{&bones[0], 100}, {nullptr, 0}}, {{&bones[1], 0}, {&bones[2], 100}}, {{&bones[3], 100}}});
    AddVertices(mesh, 0, {0, 0, -1});
    AddVertices(mesh, 1, {1, 1, 99});
    MarkNeededBones(mesh, bones[4]);
    EXPECT_TRUE(bones[0].IsNeededRendering);
    EXPECT_TRUE(bones[1].IsNeededRendering); // whatever the percentage
    EXPECT_TRUE(bones[2].IsNeededRendering);
    EXPECT_FALSE(bones[3].IsNeededRendering); // of a vertex that no corner has
    EXPECT_FALSE(bones[4].IsNeededRendering); // carries the mesh
    EXPECT_EQ(bones[1].SkinOwner, &mesh);
    EXPECT_EQ(bones[4].SkinOwner, nullptr);
}

TEST(MarkNeededBones, TheLastMeshOwnsTheBone)
{
    Skeleton bones{"a"};
    Mesh first = MakeSkinnedMesh({{{&bones[0], 100}}});
    Mesh second = MakeSkinnedMesh({{{&bones[0], 100}}});
    AddVertices(first, 0, {0, 0, 0});
    AddVertices(second, 0, {0, 0, 0});
    MarkNeededBones(first, bones[0]);
    MarkNeededBones(second, bones[0]);
    EXPECT_EQ(bones[0].SkinOwner, &second);
}

} // namespace
} // namespace tq4x
