#include "scene/NodeMatrices.h"
#include "support/NodeScene.h"

#include <random>

namespace tq4x
{
namespace
{

using namespace test;

void ExpectNear(const Matrix44& actual, const Matrix44& expected, float tolerance, const std::string& what)
{
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_NEAR(actual.M[i], expected.M[i], tolerance) << what << ", element " << i;
}

TEST(GetWorldMatrix, MultipliesUpToTheRoot)
{
    NodeScene scene;
    SetSample(scene.Root(), 0, Translation(0, 0, 100));
    Bone& a = scene.Add("a", {{2, 2, 2}, {0, 0, 90}, {10, 0, 0}});
    Bone& b = NodeScene::Add(a, "b", {{1, 1, 1}, {}, {3, 0, 0}});
    EXPECT_EQ(GetWorldMatrix(scene.Root(), 0), Translation(0, 0, 100));
    // Three along a's X, which is turned to Y and doubled.
    ExpectNear(GetWorldMatrix(b, 0), ComposeMatrix({{2, 2, 2}, {0, 0, 90}, {10, 6, 100}}), 1e-5f, "b");
}

TEST(GetWorldMatrix, TakesTheSamplesOfTheFrame)
{
    NodeScene scene;
    Bone& a = scene.Add("a");
    SetSample(a, 1, Translation(1, 0, 0));
    SetSample(a, 2, Translation(2, 0, 0));
    Bone& b = NodeScene::Add(a, "b", {{1, 1, 1}, {}, {10, 0, 0}}); // one sample for all frames
    for (const int frame : {0, 1, 2})
        EXPECT_EQ(GetWorldMatrix(b, frame)(3, 0), 10.0f + static_cast<float>(frame)) << frame;
    EXPECT_EQ(GetWorldMatrix(b, 9)(3, 0), 12.0f);
}

TEST(GetWorldMatrix, HierarchicalScalingDoesNotShear)
{
    NodeScene scene;
    Bone& parent = scene.Add("parent", {{4, 1, 1}, {}, {5, 0, 0}});
    const TransformParts turned{{1, 2, 3}, {0, 0, 30}, {1, 1, 0}};
    Bone& child = NodeScene::Add(parent, "child", turned);
    const Matrix44 sheared = GetWorldMatrix(child, 0);
    EXPECT_EQ(sheared, Multiply(ComposeMatrix(turned), ComposeMatrix({{4, 1, 1}, {}, {5, 0, 0}})));
    child.ScalingRule = ScalingRule::Maya;
    EXPECT_EQ(GetWorldMatrix(child, 0), sheared) << "only one rule differs";
    child.ScalingRule = ScalingRule::Softimage;
    // The position goes through the parent's whole matrix, the scales multiply, the rotation stays one.
    ExpectNear(GetWorldMatrix(child, 0), ComposeMatrix({{4, 2, 3}, {0, 0, 30}, {9, 1, 0}}), 1e-5f, "child");
}

TEST(GetWorldMatrix, HierarchicalScalingKeepsMirrorsOnZ)
{
    NodeScene scene;
    Bone& parent = scene.Add("parent", {{-1, 1, 1}, {}, {}});
    Bone& child = NodeScene::Add(parent, "child", {{1, 1, 2}, {}, {3, 0, 0}});
    child.ScalingRule = ScalingRule::Softimage;
    const TransformParts world = DecomposeMatrix(GetWorldMatrix(child, 0));
    EXPECT_FLOAT_EQ(world.Scale.Z, -2.0f);
    EXPECT_FLOAT_EQ(world.Translate.X, -3.0f);
}

TEST(GetBindGlobalMatrix, IsTheIdentityWithoutABindPose)
{
    NodeScene scene;
    Bone& a = scene.Add("a", {{1, 1, 1}, {}, {7, 0, 0}});
    a.BindMatrix = Translation(5, 0, 0);
    EXPECT_EQ(GetBindGlobalMatrix(a), Matrix44{}) << "neither the matrix nor the world";
    a.HasSkinningMatrix = true;
    EXPECT_EQ(GetBindGlobalMatrix(a), Translation(5, 0, 0));
}

TEST(GetBindLocalMatrix, SeesTheBindPoseFromTheParent)
{
    const struct
    {
        const char* Name;
        bool HasBindPose;
        bool HasParentBindPose;
        float X;
    } cases[] = {
        {"no bind pose", false, true, 0},
        {"from the parent's bind pose", true, true, 10 - 4},
        {"from the parent's first sample in the world", true, false, 10 - 1 - 2},
    };

    for (const auto& c : cases) {
        NodeScene scene;
        SetSample(scene.Root(), 0, Translation(1, 0, 0));
        Bone& parent = scene.Add("parent", {{1, 1, 1}, {}, {2, 0, 0}});
        SetSample(parent, 1, Translation(50, 0, 0));
        Bone& child = NodeScene::Add(parent, "child", {{1, 1, 1}, {}, {60, 0, 0}});
        parent.BindMatrix = Translation(4, 0, 0);
        parent.HasSkinningMatrix = c.HasParentBindPose;
        child.BindMatrix = Translation(10, 0, 0);
        child.HasSkinningMatrix = c.HasBindPose;
        EXPECT_EQ(GetBindLocalMatrix(child), Translation(c.X, 0, 0)) << c.Name;
        EXPECT_EQ(ComputeBindLocalMatrices(scene.Bones())[2], Translation(c.X, 0, 0)) << c.Name;
    }
}

TEST(GetBindLocalMatrix, OfARootIsItsBindPose)
{
    for (const ScalingRule rule : {ScalingRule::Standard, ScalingRule::Softimage}) {
        Bone root;
        root.ScalingRule = rule;
        SetBindPose(root, ComposeMatrix({{1, 2, 3}, {10, 20, 30}, {1, 2, 3}}));
        ExpectNear(GetBindLocalMatrix(root), root.BindMatrix, 1e-5f, "root");
    }
}

TEST(GetBindLocalMatrix, TakesHierarchicalScalingBack)
{
    NodeScene scene;
    const Matrix44 parentPose = ComposeMatrix({{4, 1, 2}, {10, 20, 30}, {5, 6, 7}});
    const TransformParts local{{1, 2, 3}, {40, -20, 30}, {1, 1, 0}};
    Bone& parent = scene.Add("parent");
    SetSample(parent, 0, parentPose);
    Bone& child = NodeScene::Add(parent, "child", local);
    child.ScalingRule = ScalingRule::Softimage;
    SetBindPose(parent, parentPose);
    SetBindPose(child, GetWorldMatrix(child, 0));
    ExpectNear(GetBindLocalMatrix(child), ComposeMatrix(local), 1e-4f, "child");
}

TEST(GetBindLocalMatrix, ASingularParentCountsAsTheIdentity)
{
    NodeScene scene;
    Bone& parent = scene.Add("parent");
    Bone& child = NodeScene::Add(parent, "child");
    SetBindPose(parent, ComposeMatrix({{0, 1, 1}, {}, {5, 0, 0}}));
    SetBindPose(child, Translation(9, 0, 0));
    EXPECT_EQ(GetBindLocalMatrix(child), Translation(9, 0, 0));
    child.ScalingRule = ScalingRule::Softimage;
    const TransformParts parts = DecomposeMatrix(GetBindLocalMatrix(child));
    EXPECT_EQ(parts.Scale.X, 0.0f) << "a quotient by 0 is 0, not infinite";
    EXPECT_EQ(parts.Scale.Y, 1.0f);
    EXPECT_EQ(parts.Translate.X, 9.0f);
}

/// Random trees with both rules, bind poses here and there.
class RandomTree
{
public:
    explicit RandomTree(std::uint32_t seed) : m_random(seed)
    {
        std::vector<Bone*> made{&Scene.Root()};
        for (int i = 0; i < 40; ++i) {
            const std::size_t parent =
                std::uniform_int_distribution<std::size_t>(0, made.size() - 1)(m_random);
            Bone& bone = NodeScene::Add(*made[parent], "n" + std::to_string(i), Parts());
            SetSample(bone, 1, ComposeMatrix(Parts()));
            bone.ScalingRule = static_cast<ScalingRule>(Int(0, 2));
            bone.BindMatrix = ComposeMatrix(Parts());
            bone.HasSkinningMatrix = Int(0, 1) == 0;
            made.push_back(&bone);
        }
    }

    NodeScene Scene;

private:
    int Int(int first, int last) { return std::uniform_int_distribution<int>(first, last)(m_random); }

    float Number(float first, float last)
    {
        return std::uniform_real_distribution<float>(first, last)(m_random);
    }

    TransformParts Parts()
    {
        return {{Number(0.1f, 3), Number(0.1f, 3), Number(-3, 3)},
                {Number(-180, 180), Number(-180, 180), Number(-180, 180)},
                {Number(-10, 10), Number(-10, 10), Number(-10, 10)}};
    }

    std::mt19937 m_random;
};

TEST(ComputeWorldMatrices, HasTheBitsOfTheWayUp)
{
    for (std::uint32_t seed = 0; seed < 50; ++seed) {
        RandomTree tree(seed);
        const std::vector<Bone*> bones = tree.Scene.Bones();
        for (const int frame : {0, 1}) {
            const std::vector<Matrix44> worlds = ComputeWorldMatrices(bones, frame);
            for (std::size_t i = 0; i < bones.size(); ++i)
                ASSERT_EQ(worlds[i], GetWorldMatrix(*bones[i], frame)) << "seed " << seed << ", bone " << i;
        }
    }
}

TEST(ComputeBindLocalMatrices, HasTheBitsOfTheSingleQuestion)
{
    for (std::uint32_t seed = 0; seed < 50; ++seed) {
        RandomTree tree(1000 + seed);
        const std::vector<Bone*> bones = tree.Scene.Bones();
        const std::vector<Matrix44> locals = ComputeBindLocalMatrices(bones);
        for (std::size_t i = 0; i < bones.size(); ++i)
            ASSERT_EQ(locals[i], GetBindLocalMatrix(*bones[i])) << "seed " << 1000 + seed << ", bone " << i;
    }
}

TEST(ComputeWorldMatrices, FindsParentsOutsideTheList)
{
    NodeScene scene;
    Bone& a = scene.Add("a", {{1, 1, 1}, {}, {1, 0, 0}});
    Bone& b = NodeScene::Add(a, "b", {{1, 1, 1}, {}, {10, 0, 0}});
    SetBindPose(b, Translation(30, 0, 0));
    std::vector<Bone*> bones;
    CollectBones(b, bones);
    EXPECT_EQ(ComputeWorldMatrices(bones, 0)[0], Translation(11, 0, 0));
    EXPECT_EQ(ComputeBindLocalMatrices(bones)[0], Translation(29, 0, 0));
}

} // namespace
} // namespace tq4x
