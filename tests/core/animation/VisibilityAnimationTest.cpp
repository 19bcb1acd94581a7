#include "animation/VisibilityAnimation.h"
#include "scene/AnimationFlags.h"
#include "scene/SkeletalModelWriter.h"
#include "support/Golden.h"
#include "support/NodeScene.h"

#include <algorithm>

namespace tq4x
{
namespace
{

using namespace test;

/// Entries with meshes of so many shapes, on nodes whose visibility was sampled.
class VisibilityAnimationTest : public testing::Test
{
protected:
    void Add(const std::string& name, std::uint32_t shapeCount, std::vector<float> samples)
    {
        Bone& bone = Scene.Add(name);
        bone.VisibilityCurve.Samples = std::move(samples);
        UpdateAnimationFlags(bone, {}, {}, 1);
        Content.Meshes.push_back(std::make_unique<Mesh>());
        Mesh& mesh = *Content.Meshes.back();
        for (std::uint32_t i = 0; i < shapeCount; ++i)
            mesh.Shapes[2 * i] = std::make_unique<SeparateDataShape>(); // the keys are materials
        Content.MeshEntries.push_back({&bone, &mesh, m_shapeCount});
        m_shapeCount += static_cast<std::int32_t>(shapeCount);
    }

    std::string Write(MeshVisibilityMode mode)
    {
        Content.MeshVisibilityMode = mode;
        XmlWriter stream;
        stream.AtLevel(2, [&] { WriteVisibilityAnimation(Content, stream, {1, 10, false}); });
        return stream.Text();
    }

    NodeScene Scene;
    SkeletalModelWriter Content;

private:
    std::int32_t m_shapeCount = 0;
};

TEST_F(VisibilityAnimationTest, BindsByIndexOfTheShape)
{
    Add("a", 1, {1, 1});
    Add("b", 2, {1, 0});
    Add("c", 1, {0, 1});
    test::ExpectGolden(Write(MeshVisibilityMode::BindByIndex), "core/animation/visibility-by-index.xml");
}

TEST_F(VisibilityAnimationTest, BindsByNameOfTheNode)
{
    Add("a", 1, {1, 1});
    Add("b", 2, {1, 0});
    test::ExpectGolden(Write(MeshVisibilityMode::BindByName), "core/animation/visibility-by-name.xml");
}

TEST_F(VisibilityAnimationTest, NothingIsWrittenWithoutAMember)
{
    EXPECT_EQ(Write(MeshVisibilityMode::BindByIndex), "") << "no entries";
    Add("constant", 2, {1, 1, 1});
    Add("never sampled", 1, {});
    // Changes on a node without a mesh have nothing to act on.
    Bone& alone = Scene.Add("alone");
    alone.VisibilityCurve.Samples = {1, 0};
    UpdateAnimationFlags(alone, {}, {}, 1);
    EXPECT_EQ(Write(MeshVisibilityMode::BindByIndex), "");
    EXPECT_EQ(Write(MeshVisibilityMode::BindByName), "");
}

TEST_F(VisibilityAnimationTest, AMeshWithoutShapesHasAMemberByNameAlone)
{
    Add("empty", 0, {1, 0});
    EXPECT_EQ(Write(MeshVisibilityMode::BindByIndex), "");
    EXPECT_NE(Write(MeshVisibilityMode::BindByName).find("MeshNodeVisibilities[\"empty\"].IsVisible"),
              std::string::npos);
}

} // namespace
} // namespace tq4x
