#include "geometry/Mesh.h"
#include "scene/NodeMatrices.h"
#include "support/NodeScene.h"

#include <limits>

namespace tq4x
{
namespace
{

using namespace test;

/// "name:index name:index ..."
std::string Order(NodeScene& scene)
{
    std::string order;
    for (const Bone* bone : scene.Bones())
        order += bone->Name + ":" + std::to_string(bone->BoneIndex) + " ";
    return order;
}

TEST(AddChild, PutsTheChildAtTheHeadOfTheChain)
{
    NodeScene scene;
    Bone& first = scene.Add("first");
    Bone& second = scene.Add("second");
    EXPECT_EQ(first.Parent, &scene.Root());
    EXPECT_EQ(second.Parent, &scene.Root());
    EXPECT_EQ(scene.Root().FirstChild.get(), &second);
    EXPECT_EQ(second.NextSibling.get(), &first);
    EXPECT_EQ(first.NextSibling, nullptr);
}

TEST(SetMesh, NamesTheMesh)
{
    Bone bone;
    Mesh mesh;
    SetMesh(bone, &mesh);
    EXPECT_EQ(bone.Mesh, &mesh);
    SetMesh(bone, nullptr);
    EXPECT_EQ(bone.Mesh, nullptr);
}

TEST(Bone, BeginsWithTheInitialValues)
{
    const Bone bone;
    EXPECT_TRUE(bone.IsOutput);
    EXPECT_TRUE(bone.IsVisible);
    EXPECT_TRUE(bone.VisibilityCurve.IsConstant);
    EXPECT_FALSE(bone.IsSegmentScaleCompensate);
    EXPECT_FALSE(bone.IsNeededRendering);
    EXPECT_FALSE(bone.HasSkinningMatrix);
    EXPECT_EQ(bone.SamplesFirstFrame, -1);
    EXPECT_EQ(bone.BoneIndex, -1);
    EXPECT_EQ(bone.CombineGroup, -1);
    EXPECT_EQ(bone.BillboardMode, 0);
    EXPECT_EQ(bone.ScalingRule, ScalingRule::Standard);
    EXPECT_EQ(bone.BindMatrix, Matrix44{});
    EXPECT_EQ(bone.Scale, (Vector3{1, 1, 1}));
    EXPECT_EQ(bone.Rotate, Vector3{});
}

TEST(CollectBones, SortsSiblingsByTheBytesOfTheirNames)
{
    const struct
    {
        const char* Name;
        std::vector<std::string> Children;
        std::string Order;
    } cases[] = {
        {"one node", {}, "root:0 "},
        {"against the order of insertion", {"b", "c", "a"}, "root:0 a:1 b:2 c:3 "},
        {"a shared prefix: the shorter first", {"arm_l", "arm"}, "root:0 arm:1 arm_l:2 "},
        {"capitals before small letters", {"a", "B", "_", "1"}, "root:0 1:1 B:2 _:3 a:4 "},
        {"bytes are unsigned", {"\xC3\xA4", "z"}, "root:0 z:1 \xC3\xA4:2 "},
        {"an empty name first", {"a", ""}, "root:0 :1 a:2 "},
    };

    for (const auto& c : cases) {
        NodeScene scene;
        for (const std::string& child : c.Children)
            scene.Add(child);
        EXPECT_EQ(Order(scene), c.Order) << c.Name;
    }
}

TEST(CollectBones, GoesDownBeforeItGoesOn)
{
    NodeScene scene;
    Bone& b = scene.Add("b");
    Bone& a = scene.Add("a");
    NodeScene::Add(b, "b1");
    Bone& a2 = NodeScene::Add(a, "a2");
    NodeScene::Add(a, "a1");
    NodeScene::Add(a2, "a21");
    EXPECT_EQ(Order(scene), "root:0 a:1 a1:2 a2:3 a21:4 b:5 b1:6 ");
}

TEST(CollectBones, EqualNamesKeepTheOrderOfInsertion)
{
    NodeScene scene;
    const Bone* const first = &scene.Add("x");
    const Bone* const second = &scene.Add("x");
    scene.Add("a");
    const Bone* const third = &scene.Add("x");
    const std::vector<Bone*> bones = scene.Bones();
    EXPECT_EQ(bones[2], first);
    EXPECT_EQ(bones[3], second);
    EXPECT_EQ(bones[4], third);
}

TEST(CollectBones, LeavesOutWhatIsNotOutputWithAllBelowIt)
{
    NodeScene scene;
    Bone& hidden = scene.Add("a");
    hidden.IsOutput = false;
    Bone& below = NodeScene::Add(hidden, "below");
    scene.Add("b");
    scene.Root().IsOutput = false; // asked of children only
    EXPECT_EQ(Order(scene), "root:0 b:1 ");
    EXPECT_EQ(below.BoneIndex, -1);
}

TEST(CollectBones, AppendsToTheList)
{
    NodeScene scene;
    scene.Add("a");
    NodeScene other;
    std::vector<Bone*> bones = other.Bones();
    CollectBones(scene.Root(), bones);
    ASSERT_EQ(bones.size(), 3u);
    EXPECT_EQ(bones[2]->BoneIndex, 2);
}

TEST(Samples, GrowFromTheFirstFrameStored)
{
    Bone bone;
    EXPECT_EQ(GetSample(bone, 5), Matrix44{}) << "nothing sampled is the identity";
    SetSample(bone, 5, Translation(5, 0, 0));
    SetSample(bone, 8, Translation(8, 0, 0));
    SetSample(bone, 4, Translation(4, 0, 0)); // before the first: ignored
    EXPECT_EQ(bone.SamplesFirstFrame, 5);
    ASSERT_EQ(bone.TransformSamples.size(), 4u);
    EXPECT_EQ(GetSample(bone, 6), Matrix44{}) << "gaps are the identity";
    SetSample(bone, 6, Translation(6, 0, 0));

    const struct
    {
        const char* Name;
        std::int32_t Frame;
        float X;
    } cases[] = {
        {"first", 5, 5},
        {"inside", 6, 6},
        {"last", 8, 8},
        {"before the first", 0, 5},
        {"after the last", 100, 8},
        {"far before", std::numeric_limits<std::int32_t>::min(), 5},
        {"far after", std::numeric_limits<std::int32_t>::max(), 8},
    };

    for (const auto& c : cases)
        EXPECT_EQ(GetSample(bone, c.Frame), Translation(c.X, 0, 0)) << c.Name;
}

TEST(Samples, ANewFirstFrameIsTakenWhenTheListIsEmpty)
{
    Bone bone;
    SetSample(bone, 5, {});
    bone.TransformSamples.clear();
    SetSample(bone, 2, Translation(2, 0, 0));
    EXPECT_EQ(bone.SamplesFirstFrame, 2);
    EXPECT_EQ(GetSample(bone, 2), Translation(2, 0, 0));
}

TEST(AppendVisibility, AppendsOneSample)
{
    Bone bone;
    AppendVisibility(bone, 1);
    AppendVisibility(bone, 0);
    EXPECT_EQ(bone.VisibilityCurve.Samples, (std::vector<float>{1, 0}));
}

/// Depth and width may not cost stack.
TEST(DeepTrees, AChainIsCollectedTransformedAndReleased)
{
    constexpr int count = 100000;
    NodeScene scene;
    Bone* last = &scene.Root();
    for (int i = 0; i < count; ++i)
        last = &NodeScene::Add(*last, "n", {{1, 1, 1}, {}, {1, 0, 0}});
    const std::vector<Bone*> bones = scene.Bones();
    ASSERT_EQ(bones.size(), static_cast<std::size_t>(count) + 1);
    EXPECT_EQ(last->BoneIndex, count);
    EXPECT_EQ(GetWorldMatrix(*last, 0)(3, 0), static_cast<float>(count));
    EXPECT_EQ(ComputeWorldMatrices(bones, 0).back(), GetWorldMatrix(*last, 0));
    for (Bone* bone : bones)
        bone->HasSkinningMatrix = bone == last;
    EXPECT_EQ(ComputeBindLocalMatrices(bones).back()(3, 0), static_cast<float>(1 - count));
}

TEST(DeepTrees, ManySiblingsAreCollectedAndReleased)
{
    NodeScene scene;
    for (int i = 0; i < 100000; ++i)
        scene.Add(std::to_string(i));
    const std::vector<Bone*> bones = scene.Bones();
    ASSERT_EQ(bones.size(), 100001u);
    EXPECT_EQ(bones[1]->Name, "0");
    EXPECT_EQ(bones[2]->Name, "1");
    EXPECT_EQ(bones[3]->Name, "10");
    EXPECT_EQ(bones.back()->Name, "99999");
}

} // namespace
} // namespace tq4x
