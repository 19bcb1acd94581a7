#include "scene/ReHomeSingleBoneMesh.h"

#include "geometry/CheckMesh.h"
#include "geometry/PrepareSkin.h"
#include "support/GeometryScene.h"

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

/// Bones "a" and "b" at (1, 0, 0) and (0, 2, 0), and "node" at (0, 0, 4).
class ReHomeSingleBoneMeshTest : public testing::Test
{
protected:
    ReHomeSingleBoneMeshTest()
    {
        const Matrix44 places[] = {Translation(1, 0, 0), Translation(0, 2, 0), Translation(0, 0, 4)};
        for (std::size_t i = 0; i < 3; ++i) {
            m_bones[i].HasSkinningMatrix = true;
            m_bones[i].BindMatrix = places[i];
        }
    }

    Bone& A() { return m_bones[0]; }

    Bone& B() { return m_bones[1]; }

    Bone& Node() { return m_bones[2]; }

    /// A mesh with one polygon of all vertices.
    Mesh Make(SkinWeightTable table)
    {
        std::vector<std::int32_t> vertices(table.size());
        for (std::size_t i = 0; i < vertices.size(); ++i)
            vertices[i] = static_cast<std::int32_t>(i);
        Mesh mesh = MakeSkinnedMesh(std::move(table));
        mesh.NodeName = "node";
        mesh.Pool[S::Normal].Edit<Vector3>() = {{0, 0, 1}};
        AddVertices(mesh, 0, vertices);
        return mesh;
    }

    Skeleton m_bones{"a", "b", "node"};
};

TEST_F(ReHomeSingleBoneMeshTest, TheMeshGoesOverToItsBone)
{
    Mesh mesh = Make({{{&A(), 100}}, {{&A(), 100}}});
    Node().Mesh = &mesh;
    Node().BindMatrix = ComposeMatrix({{1, 1, 3}, {}, {0, 0, 4}});
    EXPECT_TRUE(ReHomeSingleBoneMesh(mesh, Node()));
    EXPECT_EQ(A().Mesh, &mesh);
    EXPECT_EQ(Node().Mesh, nullptr);
    EXPECT_EQ(mesh.NodeName, "a");
    EXPECT_EQ(mesh.SkinWeights, nullptr);
    EXPECT_EQ(mesh.Shapes[0]->SkinWeights, nullptr);
    EXPECT_EQ(mesh.Shapes[0]->Pool[S::Position].Read<Vector3>()[0], (Vector3{-1, 0, 4}));
    EXPECT_EQ(mesh.Shapes[0]->Pool[S::Normal].Read<Vector3>()[0], (Vector3{0, 0, 3})); // not normalised
    EXPECT_EQ(mesh.Pool[S::Position].Read<Vector3>()[0], Vector3{});
    EXPECT_THAT(CheckMesh(mesh, ShapeStage::Filled), testing::IsEmpty()); // polygons without bones, too
}

TEST_F(ReHomeSingleBoneMeshTest, WhatCountsAsOneBone)
{
    const struct
    {
        const char* Name;
        SkinWeightTable Table;
        bool Expected;
    } cases[] = {
        {"all of one bone", {{{&A(), 100}}, {{&A(), 100}}}, true},
        {"others at 0 percent", {{{&B(), 0}, {&A(), 100}}, {{&A(), 100}, {&B(), 0}}}, true},
        {"others below 0", {{{&B(), -5}, {&A(), 100}}}, true},
        {"another bone in another vertex", {{{&A(), 100}}, {{&B(), 100}}}, false},
        {"another bone in the same vertex", {{{&A(), 99}, {&B(), 1}}}, false},
        {"an influence without a bone", {{{&A(), 99}, {nullptr, 1}}}, false},
        {"the first without a bone", {{{nullptr, 1}, {&A(), 99}}}, false},
        {"no influence above 0", {{{&A(), 0}}, {}}, false},
        {"an empty table", {}, false},
    };

    for (const auto& test : cases) {
        Mesh mesh = Make(test.Table);
        A().Mesh = B().Mesh = nullptr;
        Node().Mesh = &mesh;
        EXPECT_EQ(ReHomeSingleBoneMesh(mesh, Node()), test.Expected) << test.Name;
        EXPECT_EQ(A().Mesh == &mesh, test.Expected) << test.Name;
        EXPECT_EQ(Node().Mesh == &mesh, !test.Expected) << test.Name;
        EXPECT_EQ(mesh.SkinWeights == nullptr, test.Expected) << test.Name;
        EXPECT_EQ(mesh.NodeName, test.Expected ? "a" : "node") << test.Name;
    }
}

TEST_F(ReHomeSingleBoneMeshTest, AnUnskinnedMeshIsRefused)
{
    Mesh mesh = MakeMesh();
    Node().Mesh = &mesh;
    EXPECT_FALSE(ReHomeSingleBoneMesh(mesh, Node()));
    EXPECT_EQ(Node().Mesh, &mesh);
}

TEST_F(ReHomeSingleBoneMeshTest, TheBoneMayBeTheMeshesOwn)
{
    Mesh mesh = Make({{{&Node(), 100}}});
    Node().Mesh = &mesh;
    EXPECT_TRUE(ReHomeSingleBoneMesh(mesh, Node()));
    EXPECT_EQ(Node().Mesh, &mesh);
    EXPECT_EQ(mesh.SkinWeights, nullptr);
    EXPECT_EQ(mesh.Shapes[0]->Pool[S::Position].Read<Vector3>()[0], Vector3{});
}

TEST_F(ReHomeSingleBoneMeshTest, TwoMeshesOnOneBoneMergeTheirShapes)
{
    Mesh first = Make({{{&A(), 100}}});
    AddVertices(first, 4, {0, 0, 0});
    first.CombineGroup = 5;
    Mesh second = Make({{{&A(), 100}}, {{&A(), 100}}});
    AddVertices(second, 2, {0, 0, 0});
    second.CombineGroup = 6;
    B().Mesh = &first;
    Node().Mesh = &second;
    ASSERT_TRUE(ReHomeSingleBoneMesh(first, B()));
    second.Shapes[0]->IsVisible = second.Shapes[2]->IsVisible = false;
    ASSERT_TRUE(ReHomeSingleBoneMesh(second, Node()));
    EXPECT_EQ(A().Mesh, &first);
    EXPECT_EQ(Node().Mesh, nullptr);
    ASSERT_EQ(CountShapes(first), 3);
    EXPECT_EQ(first.Shapes[0]->Corners.size(), 1u); // both use material 0: the first stays
    EXPECT_TRUE(first.Shapes[0]->IsVisible);
    EXPECT_FALSE(first.Shapes[2]->IsVisible);
    EXPECT_EQ(first.Shapes[2]->SkinWeights, nullptr);
    EXPECT_EQ(first.Shapes[2]->Pool[S::Position].Read<Vector3>()[0], (Vector3{-1, 0, 4}));
    EXPECT_EQ(first.NodeName, "a");
    EXPECT_EQ(first.CombineGroup, 5);
    EXPECT_EQ(CountShapes(second), 0);
    EXPECT_THAT(CheckMesh(first, ShapeStage::Filled), testing::IsEmpty());
}

TEST_F(ReHomeSingleBoneMeshTest, ASkinnedMeshOnTheBoneKeepsTheNewcomerAway)
{
    Mesh resident = Make({{{&A(), 50}, {&B(), 50}}});
    Mesh mesh = Make({{{&A(), 100}}});
    A().Mesh = &resident;
    Node().Mesh = &mesh;
    Node().IsVisible = false;
    EXPECT_FALSE(ReHomeSingleBoneMesh(mesh, Node()));
    EXPECT_EQ(A().Mesh, &resident);
    EXPECT_EQ(Node().Mesh, &mesh);
    EXPECT_TRUE(A().IsVisible);
    EXPECT_NE(mesh.SkinWeights, nullptr);
    EXPECT_EQ(CountShapes(resident), 1);
    EXPECT_EQ(mesh.Shapes[0]->Pool[S::Position].Read<Vector3>()[0], Vector3{});
    // It goes on as a rigid skin.
    PrepareSkin(mesh, Node(), AdjustSkinning::None);
    EXPECT_TRUE(mesh.Shapes[0]->IsRigidSkinning);
    EXPECT_EQ(mesh.Shapes[0]->Pool[S::Position].Read<Vector3>()[0], (Vector3{-1, 0, 4}));
}

TEST_F(ReHomeSingleBoneMeshTest, TheNewcomersVisibilityOverwritesTheBones)
{
    Mesh mesh = Make({{{&A(), 100}}});
    Node().Mesh = &mesh;
    Node().IsVisible = false;
    Node().VisibilityCurve.Samples = {0, 1, 0};
    Node().VisibilityCurve.Keys = {{1, 0, KeyKind::Step}};
    Node().VisibilityCurve.NeedsOutput = true;
    Node().VisibilityCurve.Name = "node.v";
    A().VisibilityCurve.Samples = {1, 1, 1};
    EXPECT_TRUE(ReHomeSingleBoneMesh(mesh, Node()));
    EXPECT_FALSE(A().IsVisible);
    EXPECT_EQ(A().VisibilityCurve.Samples, (std::vector<float>{0, 1, 0}));
    EXPECT_EQ(A().VisibilityCurve.Keys, Node().VisibilityCurve.Keys);
    EXPECT_TRUE(A().VisibilityCurve.NeedsOutput);
    EXPECT_EQ(A().VisibilityCurve.Name, "node.v");
    EXPECT_FALSE(Node().IsVisible); // the node keeps its own
}

TEST_F(ReHomeSingleBoneMeshTest, WithoutBindPosesNothingMoves)
{
    Mesh mesh = Make({{{&A(), 100}}});
    mesh.Shapes[0]->Pool[S::Position].Edit<Vector3>()[0] = {5, 6, 7};
    Node().Mesh = &mesh;
    A().HasSkinningMatrix = Node().HasSkinningMatrix = false;
    EXPECT_TRUE(ReHomeSingleBoneMesh(mesh, Node()));
    EXPECT_EQ(mesh.Shapes[0]->Pool[S::Position].Read<Vector3>()[0], (Vector3{5, 6, 7}));
}

} // namespace
} // namespace tq4x
