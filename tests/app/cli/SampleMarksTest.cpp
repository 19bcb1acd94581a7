#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Program.h"

// Marks a scene that a modelling program wrote, with custom properties of its own.
namespace tq4x::cli::test
{
namespace
{

using testing::HasSubstr;

const std::filesystem::path Sample =
    std::filesystem::path(TQ4X_SAMPLES) / "gltf/BlenderExtras/gltf_extras.glb";

class SampleMarksTest : public ProgramTest
{
protected:
    void SetUp() override
    {
        if (!std::filesystem::exists(Sample)) {
            GTEST_SKIP() << "NOT RUN: the sample scene is absent; it is looked for at " << Sample;
        }
        m_original = tq4x::test::ReadWholeFile(Sample);
        Write("scene.glb", m_original);
    }

    void Set(const std::string& on, const std::vector<std::string>& words) const
    {
        std::vector<std::string> all = {"set", Path("scene.glb"), "--on", on, "--plugin", TQ4X_WHOLE_PLUGIN};
        all.insert(all.end(), words.begin(), words.end());
        const Outcome outcome = RunInside(all);
        EXPECT_EQ(outcome.Code, Done) << outcome.Err;
        EXPECT_EQ(outcome.Err, "");
    }

    /// The piece of a .glb behind its text, which no mark is in.
    static std::string BinaryOf(const std::string& glb)
    {
        return glb.substr(glb.find(std::string("BIN\0", 4)));
    }

    std::string m_original;
};

TEST_F(SampleMarksTest, KeepAllElseAndGoBack)
{
    Set("Cube", {"TQ4X_ForPennonBillboardType=0"});
    const std::string unmarked = Read("scene.glb");
    EXPECT_THAT(unmarked, HasSubstr(R"("my_custom_object_property":39,"TQ4X_ForPennonBillboardType":0)"));
    EXPECT_THAT(unmarked, HasSubstr(R"("my_scene_property":42)"));
    EXPECT_EQ(BinaryOf(unmarked), BinaryOf(m_original));

    Set("Cube", {"TQ4X_ForPennonBillboardType=3"});
    EXPECT_NE(Read("scene.glb"), unmarked);
    Set("Cube", {"TQ4X_ForPennonBillboardType=0"});
    EXPECT_EQ(Read("scene.glb"), unmarked);
    Set("Cube", {"TQ4X_ForPennonBillboardType=0"});
    EXPECT_EQ(Read("scene.glb"), unmarked);
}

TEST_F(SampleMarksTest, AreListedBesideWhatTheSceneSaysByItself)
{
    Set("Cube", {"TQ4X_ForPennonNoCompressNode=1"});
    Set("material:Material", {"TQ4X_ForPennonMatAttrBlendMode=3"});
    EXPECT_EQ(RunInside({"pages", Path("scene.glb"), "--plugin", TQ4X_WHOLE_PLUGIN}).Out, R"(object Cube
  TQ4X_ForPennonNoCompProp
    TQ4X_ForPennonNoCompressNode = 1
material Material
  TQ4X_ForPennonMaterialAttrProp
    TQ4X_ForPennonMatAttrCullFace = 3
    TQ4X_ForPennonMatAttrFragmentLighting = true
    TQ4X_ForPennonMatAttrVertexLighting = false
    TQ4X_ForPennonMatAttrBlendMode = 3
    TQ4X_ForPennonMatAttrNoCompress = 0
)");
}

} // namespace
} // namespace tq4x::cli::test
