#include "scene/PrepareForWriting.h"

#include "scene/SkeletalModelWriter.h"
#include "support/GeometryScene.h"
#include "support/NodeScene.h"

namespace tq4x
{
namespace
{

using namespace test;

/// A model whose meshes are made of one triangle each.
class Model
{
public:
    NodeScene Scene;
    SkeletalModelWriter Content;

    /// A mesh on the node, with one shape for each material.
    Mesh& AddMesh(Bone& bone, const std::vector<std::uint32_t>& materials = {0})
    {
        return Carry(bone, MakeSkinnedMesh(SkinWeightTable(3)), materials, false);
    }

    /// The same, moved by the bones of the three corners.
    Mesh& AddSkinnedMesh(Bone& bone, const std::vector<Bone*>& corners)
    {
        SkinWeightTable table;
        for (Bone* corner : corners)
            table.push_back({{corner, 100}});
        return Carry(bone, MakeSkinnedMesh(std::move(table)), {0}, true);
    }

    bool Prepare(const PrepareSettings& settings = {})
    {
        return PrepareForWriting(Content, &Scene.Root(), settings);
    }

private:
    Mesh& Carry(Bone& bone, Mesh made, const std::vector<std::uint32_t>& materials, bool isSkinned)
    {
        Content.Meshes.push_back(std::make_unique<Mesh>(std::move(made)));
        Mesh& mesh = *Content.Meshes.back();
        mesh.NodeName = bone.Name;
        mesh.Pool[VertexSlot::Position].Edit<Vector3>() = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
        if (!isSkinned)
            SetSkinWeights(mesh, nullptr);
        for (const std::uint32_t material : materials)
            AddVertices(mesh, material, {0, 1, 2});
        SetMesh(bone, &mesh);
        return mesh;
    }
};

TEST(PrepareForWriting, WithoutARootTheModelIsEmpty)
{
    SkeletalModelWriter content;
    EXPECT_TRUE(PrepareForWriting(content, nullptr, {}));
    EXPECT_TRUE(content.Bones.empty());
    EXPECT_TRUE(content.MeshEntries.empty());
}

TEST(PrepareForWriting, ListsBonesAndEntriesInTheirOrder)
{
    Model model;
    Bone& b = model.Scene.Add("b");
    Bone& a = model.Scene.Add("a");
    Bone& c = model.Scene.Add("c");
    Mesh& meshOfB = model.AddMesh(b, {0, 2});
    Mesh& meshOfA = model.AddMesh(a);
    ASSERT_TRUE(model.Prepare());
    EXPECT_EQ(model.Content.Bones, (std::vector<Bone*>{&model.Scene.Root(), &a, &b, &c}));
    ASSERT_EQ(model.Content.MeshEntries.size(), 2u);
    EXPECT_EQ(model.Content.MeshEntries[0].Mesh, &meshOfA);
    EXPECT_EQ(model.Content.MeshEntries[0].FirstShapeIndex, 0);
    EXPECT_EQ(model.Content.MeshEntries[1].Mesh, &meshOfB);
    EXPECT_EQ(model.Content.MeshEntries[1].FirstShapeIndex, 1);
    EXPECT_TRUE(a.IsNeededRendering && b.IsNeededRendering);
    EXPECT_FALSE(c.IsNeededRendering || model.Scene.Root().IsNeededRendering);
    EXPECT_EQ(meshOfB.Shapes[2]->PrimitiveSets.size(), 1u) << "finished";
    EXPECT_NE(meshOfB.Shapes[2]->Pool.OrientedBoundingBox, OrientedBoundingBox{});
}

TEST(PrepareForWriting, AMeshOfTwoBonesIsClonedForTheSecond)
{
    Model model;
    Bone& a = model.Scene.Add("a");
    Bone& b = model.Scene.Add("b");
    Mesh& mesh = model.AddMesh(a, {0, 1});
    SetMesh(b, &mesh);
    ASSERT_TRUE(model.Prepare());
    ASSERT_EQ(model.Content.MeshEntries.size(), 2u);
    EXPECT_EQ(model.Content.MeshEntries[0].Mesh, &mesh);
    EXPECT_NE(model.Content.MeshEntries[1].Mesh, &mesh);
    EXPECT_EQ(model.Content.MeshEntries[1].FirstShapeIndex, 2);
    EXPECT_EQ(model.Content.Meshes.size(), 2u) << "the model owns the clone";
    EXPECT_EQ(model.Content.MeshEntries[1].Mesh->Shapes[1]->PrimitiveSets.size(), 1u);
}

TEST(PrepareForWriting, VisibilityGoesToTheShapes)
{
    Model model;
    Bone& hidden = model.Scene.Add("hidden");
    Bone& shown = model.Scene.Add("shown");
    hidden.IsVisible = false;
    Mesh& hiddenMesh = model.AddMesh(hidden, {0, 1});
    Mesh& shownMesh = model.AddMesh(shown);
    ASSERT_TRUE(model.Prepare());
    EXPECT_FALSE(hiddenMesh.Shapes[0]->IsVisible || hiddenMesh.Shapes[1]->IsVisible);
    EXPECT_TRUE(shownMesh.Shapes[0]->IsVisible);
}

TEST(PrepareForWriting, CombineGroupsReachOneLevelDown)
{
    const struct
    {
        const char* Name;
        std::int32_t Grandparent;
        std::int32_t Parent;
        std::int32_t Own;
        std::int32_t Expected;
    } cases[] = {
        {"none", -1, -1, -1, -1},
        {"its own", -1, -1, 3, 3},
        {"its own beside the parent's", -1, 7, 3, 3},
        {"its own 0", -1, 7, 0, 0},
        {"the parent's", -1, 7, -1, 7},
        {"not the grandparent's", 9, -1, -1, -1},
        {"above the largest", -1, -1, 300, 255},
        {"the parent's above the largest", -1, 300, -1, 255},
        {"below none", -1, -5, -5, -1},
    };

    for (const auto& c : cases) {
        Model model;
        Bone& grandparent = model.Scene.Add("g");
        Bone& parent = NodeScene::Add(grandparent, "p");
        Bone& bone = NodeScene::Add(parent, "b");
        grandparent.CombineGroup = c.Grandparent;
        parent.CombineGroup = c.Parent;
        bone.CombineGroup = c.Own;
        Mesh& parentMesh = model.AddMesh(parent); // a chain of nodes with meshes hands nothing down
        Mesh& mesh = model.AddMesh(bone);
        ASSERT_TRUE(model.Prepare());
        EXPECT_EQ(mesh.CombineGroup, c.Expected) << c.Name;
        EXPECT_EQ(bone.CombineGroup, c.Own) << c.Name << ": the node keeps its own";
        EXPECT_EQ(parent.CombineGroup, c.Parent) << c.Name;
        if (c.Parent >= 0) {
            EXPECT_EQ(parentMesh.CombineGroup, std::min(c.Parent, 255)) << c.Name;
        }
    }
}

TEST(PrepareForWriting, ARootWithoutParentKeepsNoGroup)
{
    Model model;
    Mesh& mesh = model.AddMesh(model.Scene.Root());
    ASSERT_TRUE(model.Prepare());
    EXPECT_EQ(mesh.CombineGroup, -1);
}

TEST(PrepareForWriting, AMeshTakesVisibilityAndGroupAlongToItsOneBone)
{
    Model model;
    Bone& joint = model.Scene.Add("joint");
    Bone& node = model.Scene.Add("node");
    joint.CombineGroup = 1;
    node.CombineGroup = 2;
    node.IsVisible = false;
    node.VisibilityCurve.Samples = {0, 1};
    Mesh& mesh = model.AddSkinnedMesh(node, {&joint, &joint, &joint});
    ASSERT_TRUE(model.Prepare());
    ASSERT_EQ(joint.Mesh, &mesh);
    EXPECT_EQ(node.Mesh, nullptr);
    EXPECT_EQ(mesh.CombineGroup, 2);
    EXPECT_FALSE(mesh.Shapes[0]->IsVisible);
    EXPECT_FALSE(joint.VisibilityCurve.IsConstant);
    EXPECT_EQ(joint.VisibilityCurve.Name, "joint.v") << "flags are updated after the skins";
    ASSERT_EQ(model.Content.MeshEntries.size(), 1u);
    EXPECT_EQ(model.Content.MeshEntries[0].Bone, &joint);
}

TEST(PrepareForWriting, RigidSkinningLeavesTheMeshOnItsNode)
{
    Model model;
    Bone& joint = model.Scene.Add("joint");
    Bone& node = model.Scene.Add("node");
    Mesh& mesh = model.AddSkinnedMesh(node, {&joint, &joint, &joint});
    ASSERT_TRUE(model.Prepare({.Channels = {}, .IsRigidSkinning = true}));
    EXPECT_EQ(node.Mesh, &mesh);
    EXPECT_TRUE(mesh.Shapes[0]->IsRigidSkinning);
    EXPECT_TRUE(joint.IsNeededRendering);
    EXPECT_EQ(joint.SkinOwner, &mesh);
    EXPECT_FALSE(node.IsNeededRendering) << "a skinned mesh does not mark its own bone";
}

TEST(PrepareForWriting, UpdatesTheFlagsOfAllBones)
{
    Model model;
    Bone& away = model.Scene.Add("away", {{1, 1, 1}, {}, {5, 0, 0}});
    Bone& resting = model.Scene.Add("resting", {{1, 1, 1}, {}, {5, 0, 0}});
    for (Bone* bone : {&away, &resting})
        ExtractChannels(*bone, {});
    SetBindPose(away, Translation(4, 0, 0));
    SetBindPose(resting, Translation(5, 0, 0));
    away.VisibilityCurve.Samples = {1, 1, 0};
    ASSERT_TRUE(model.Prepare({.Channels = {.Tolerances = {}, .FrameSteps = 2}}));
    EXPECT_TRUE(away.IsTranslateAnimated);
    EXPECT_FALSE(away.IsScaleAnimated || away.IsRotateAnimated || resting.IsTranslateAnimated);
    ASSERT_EQ(away.VisibilityCurve.Keys.size(), 2u);
    EXPECT_EQ(away.VisibilityCurve.Keys[1].Frame, 1.0f);
    // Tolerances are those of the export.
    ASSERT_TRUE(model.Prepare({.Channels = {.Tolerances = {.Translate = 1.0f}}}));
    EXPECT_FALSE(away.IsTranslateAnimated);
}

} // namespace
} // namespace tq4x
