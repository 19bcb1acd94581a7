#include "animation/SkeletalAnimation.h"
#include "scene/AnimationFlags.h"
#include "scene/ExtractChannels.h"
#include "scene/NodeMatrices.h"
#include "scene/SkeletalModelWriter.h"
#include "support/Golden.h"
#include "support/NodeScene.h"

namespace tq4x
{
namespace
{

using namespace test;

/// A model without meshes whose bones are sampled node by node.
class SkeletalAnimationTest : public testing::Test
{
protected:
    SkeletalAnimationTest() { Settings.Range = {.StartFrame = 1, .EndFrame = 3, .IsLoop = true}; }

    static Bone& Sample(Bone& bone, const std::vector<TransformParts>& transforms)
    {
        bone.TransformSamples.clear();
        for (std::size_t i = 0; i < transforms.size(); ++i)
            SetSample(bone, static_cast<std::int32_t>(i), ComposeMatrix(transforms[i]));
        return bone;
    }

    std::string Write()
    {
        XmlWriter stream;
        stream.AtLevel(2, [&] { WriteSkeletalAnimation(Content, stream, Settings); });
        return stream.Text();
    }

    /// Brings the samples to keys and flags.
    void Prepare()
    {
        Content.Bones = Scene.Bones();
        for (Bone* bone : Content.Bones)
            ExtractChannels(*bone, {Settings.Tolerances, Settings.FrameSteps});
        const std::vector<Matrix44> bindLocals = ComputeBindLocalMatrices(Content.Bones);
        for (std::size_t i = 0; i < bindLocals.size(); ++i)
            UpdateAnimationFlags(*Content.Bones[i], bindLocals[i], Settings.Tolerances, Settings.FrameSteps);
    }

    std::string PrepareAndWrite()
    {
        Prepare();
        return Write();
    }

    NodeScene Scene;
    SkeletalModelWriter Content;
    SkeletalAnimationSettings Settings;
};

TEST_F(SkeletalAnimationTest, WritesTheWholeContent)
{
    Content.Magnify = 2;
    Settings.FrameFormat = true;
    Settings.ScaleQuantizeQuality = 1;
    Settings.RotateQuantizeQuality = 2;
    Settings.TranslateQuantizeQuality = 3;
    Sample(Scene.Add("arm"), {{{1, 1, 1}, {0, 0, 0}, {1, 0, 0}},
                              {{1, 1, 1}, {90, 0, 0}, {2, 0, 0}},
                              {{1, 1, 1}, {0, 0, 0}, {5, 0, 0}}});
    test::ExpectGolden(PrepareAndWrite(), "core/animation/skeletal-animation.xml");
}

TEST_F(SkeletalAnimationTest, NothingAnimatedWritesNothing)
{
    Scene.Add("arm", {{1, 1, 1}, {10, 20, 30}, {1, 2, 3}});
    EXPECT_EQ(PrepareAndWrite(), "");
}

/// The part of the text from the first tag of a name to its last end tag.
std::string Section(const std::string& text, const std::string& name)
{
    const std::size_t first = text.find("<" + name);
    const std::string endTag = "</" + name + ">\n";
    const std::size_t last = text.rfind(endTag);
    return first == std::string::npos ? "" : text.substr(first, last + endTag.size() - first);
}

TEST_F(SkeletalAnimationTest, ForcedAndAwayAxesWithoutKeysRestAtTheirBaseValue)
{
    Content.Magnify = 2;
    Bone& forced = Scene.Add("forced", {{1, 2, 3}, {90, 0, -90}, {1, 2, 3}});
    forced.IsForceScaleKey = true;
    Bone& away = Scene.Add("away", {{1, 1, 1}, {0, 0, 90}, {1, 2, 3}});
    SetBindPose(away, Translation(1, 5, 3));
    const std::string text = PrepareAndWrite();
    test::ExpectGolden(Section(text, "MemberAnimationDataSet"), "core/animation/bone-members-resting.xml");
}

TEST_F(SkeletalAnimationTest, BonesStandInTheOrderOfTheBoneList)
{
    for (const char* name : {"b", "c", "a"})
        Scene.Add(name).IsForceRotateKey = true;
    const std::string text = PrepareAndWrite();
    const std::size_t a = text.find("Skeleton.Bones[\"a\"].AnimatedTransform");
    const std::size_t b = text.find("Skeleton.Bones[\"b\"].AnimatedTransform");
    const std::size_t c = text.find("Skeleton.Bones[\"c\"].AnimatedTransform");
    EXPECT_LT(a, b);
    EXPECT_LT(b, c);
    EXPECT_EQ(text.find("Skeleton.Bones[\"root\"]"), std::string::npos) << "a bone at rest has no member";
}

TEST_F(SkeletalAnimationTest, TranslationKeysAreMagnifiedInPlace)
{
    Content.Magnify = 2;
    Bone& bone =
        Sample(Scene.Add("bone"), {{{1, 1, 1}, {0, 0, 0}, {1, 0, 0}}, {{3, 1, 1}, {0, 0, 60}, {5, 0, 0}}});
    Prepare();
    const CurveKey scale = bone.ScaleCurves[0].Keys[1];
    const CurveKey rotate = bone.RotateCurves[2].Keys[1];
    Write();
    const CurveKey& translate = bone.TranslateCurves[0].Keys[1];
    EXPECT_EQ(translate.Value, 10.0f);
    EXPECT_EQ(translate.InSlope, 8.0f);
    EXPECT_EQ(translate.OutSlope, 8.0f);
    EXPECT_EQ(translate.Frame, 1.0f);
    EXPECT_EQ(bone.ScaleCurves[0].Keys[1], scale);
    EXPECT_EQ(bone.RotateCurves[2].Keys[1], rotate);
    Write();
    EXPECT_EQ(translate.Value, 20.0f) << "content is written once";
}

TEST_F(SkeletalAnimationTest, LoopShowsInItsModeAlone)
{
    Sample(Scene.Add("bone"), {{}, {{1, 1, 1}, {}, {5, 0, 0}}});
    std::string loop = PrepareAndWrite();
    Settings.Range.IsLoop = false;
    const std::string once = Write();
    const std::string word = "LoopMode=\"Loop\"";
    const std::size_t place = loop.find(word);
    ASSERT_NE(place, std::string::npos);
    EXPECT_EQ(loop.replace(place, word.size(), "LoopMode=\"OneTime\""), once);
}

TEST_F(SkeletalAnimationTest, BakeOptionsAreThoseOfTheExport)
{
    const struct
    {
        const char* Name;
        int FrameSteps;
        NodeTolerances Tolerances;
        std::string Text;
    } cases[] = {
        {"defaults of the options",
         1,
         {.Scale = 0.1f, .Rotate = 0.1f, .Translate = 0.01f},
         "FramePrecision=\"_1_1\" ScaleTolerance=\"0.1\" RotateTolerance=\"0.00174533\" "
         "TranslateTolerance=\"0.01\""},
        {"half frames",
         2,
         {.Scale = 0.5f, .Rotate = 180.0f, .Translate = 2.0f},
         "FramePrecision=\"_1_2\" ScaleTolerance=\"0.5\" RotateTolerance=\"3.14159\" "
         "TranslateTolerance=\"2\""},
        {"tenths",
         10,
         {.Scale = 0, .Rotate = 0, .Translate = 0},
         "FramePrecision=\"_1_10\" ScaleTolerance=\"0\" RotateTolerance=\"0\" TranslateTolerance=\"0\""},
    };

    Scene.Add("bone").IsForceScaleKey = true;
    for (const auto& c : cases) {
        Settings.FrameSteps = c.FrameSteps;
        Settings.Tolerances = c.Tolerances;
        const std::string text = PrepareAndWrite();
        EXPECT_NE(text.find("<SkeletalAnimationBakeOption IsBakeAllEnabled=\"true\" " + c.Text + "/>"),
                  std::string::npos)
            << c.Name << "\n"
            << text;
    }
}

TEST_F(SkeletalAnimationTest, NamesStandAsTheyAre)
{
    Scene.Add("a&b<c>").IsForceScaleKey = true;
    EXPECT_NE(PrepareAndWrite().find("<Path>Skeleton.Bones[\"a&b<c>\"].AnimatedTransform</Path>"),
              std::string::npos);
}

} // namespace
} // namespace tq4x
