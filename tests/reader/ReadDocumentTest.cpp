#include "ReadDocument.h"

#include <gmock/gmock.h>

#include "reader/ReaderDocuments.h"

namespace tq4x::reader
{
namespace
{

using test::ReadGood;
using testing::ElementsAre;
using testing::FloatEq;
using Texts = std::vector<std::string>;

TEST(ReadDocument, KindsAreKnownByTheirExtensions)
{
    EXPECT_EQ(KindOf("a/b.qmdl"), FileKind::Model);
    EXPECT_EQ(KindOf("B.QTEX"), FileKind::Texture);
    EXPECT_EQ(KindOf("b.qskla"), FileKind::SkeletalAnimation);
    EXPECT_EQ(KindOf("b.qmata"), FileKind::MaterialAnimation);
    EXPECT_EQ(KindOf("b.qmdla"), FileKind::VisibilityAnimation);
    EXPECT_EQ(KindOf("b.qcam"), FileKind::Camera);
    EXPECT_EQ(KindOf("b.qlgt"), FileKind::Light);
    EXPECT_EQ(KindOf("b.qenv"), FileKind::Environment);
    EXPECT_EQ(KindOf("b.xml"), std::nullopt);
    EXPECT_EQ(KindOf("qmdl"), std::nullopt);
    EXPECT_EQ(ExtensionOf(FileKind::Environment), "qenv");
}

TEST(ReadDocument, Envelope)
{
    for (const char* const name : {"house.qmdl", "Textures/Tiles.qtex"}) {
        const Envelope head = ReadGood(name).Head;
        EXPECT_EQ(head.Author, "ann") << name;
        EXPECT_EQ(head.Date, "2013-04-09T08:07:06") << name;
        EXPECT_EQ(head.Source, "house.scn") << name;
        EXPECT_EQ(head.ToolName, "TQ4X_ForPennonExport for Softimage 2013") << name;
        EXPECT_EQ(head.ToolVersion, "0.5.3") << name;
    }
}

TEST(ReadDocument, WindowsLineEndsAreTheSame)
{
    std::string text = test::DocumentText("house.qmdl");
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 2)) {
        text.insert(at, "\r");
    }
    const test::ReadResult result = test::ReadText(FileKind::Model, text);
    EXPECT_EQ(result.Findings, Texts());
    ASSERT_TRUE(result.Content);
    EXPECT_EQ(result.Content->Model->Shapes.size(), 2U);
}

TEST(ReadDocument, ModelAsAWhole)
{
    const Document document = ReadGood("house.qmdl");
    ASSERT_TRUE(document.Model);
    const Model& model = *document.Model;
    EXPECT_EQ(model.Summary.MaterialCount, 2);
    EXPECT_EQ(model.Summary.BoneCount, 4);
    EXPECT_EQ(model.NeededBoneCapacity, 20);
    EXPECT_FALSE(model.IsNonuniformScalable);
    EXPECT_EQ(model.Magnify, 2.0F);
    EXPECT_EQ(model.AdjustSkinning, "None");
    EXPECT_EQ(model.MeshVisibilityMode, "BindByName");
    ASSERT_EQ(model.NodeVisibilities.size(), 2U);
    EXPECT_EQ(model.NodeVisibilities[1].Name, "arm");
    EXPECT_FALSE(model.NodeVisibilities[1].IsVisible);
    ASSERT_EQ(model.LookupTables.Tables.size(), 1U);
    EXPECT_EQ(model.LookupTables.Name, "house.MaterialLutset");
    EXPECT_EQ(model.LookupTables.Tables[0].Name, "Specular");
    EXPECT_TRUE(model.LookupTables.Tables[0].IsSizeDoubled);
    EXPECT_EQ(model.LookupTables.Tables[0].Values.Keys.size(), 2U);
    ASSERT_EQ(model.Meshes.size(), 2U);
    EXPECT_EQ(model.Meshes[0].NodeName, "house");
    EXPECT_EQ(model.Meshes[0].RenderPriority, 3);
    EXPECT_EQ(model.Meshes[0].CombineGroup, 0);
    EXPECT_EQ(model.Meshes[1].CombineGroup, -1);
    EXPECT_EQ(model.Meshes[1].Shape, 1);
    EXPECT_EQ(model.Meshes[1].MaterialName, "Wall");
}

TEST(ReadDocument, Skeleton)
{
    const Document document = ReadGood("house.qmdl");
    const std::vector<Bone>& bones = document.Model->Bones.Bones;
    ASSERT_EQ(bones.size(), 4U);
    EXPECT_EQ(bones[0].Parent, -1);
    EXPECT_EQ(bones[1].Parent, 0);
    EXPECT_EQ(bones[2].Parent, 1);
    EXPECT_EQ(bones[3].Parent, 0);
    EXPECT_FLOAT_EQ(bones[0].Local.Rotate[0], 1.5708F);
    EXPECT_EQ(bones[2].Local.Translate, (Vector3{2, 0, 0}));
    EXPECT_TRUE(bones[2].HasSkinningMatrix);
    ASSERT_EQ(bones[0].UserData.size(), 3U);
    EXPECT_EQ(bones[0].UserData[0].Key, "note & more");
    EXPECT_THAT(bones[0].UserData[0].Strings, ElementsAre("first", "a < b"));
    EXPECT_THAT(bones[0].UserData[1].Integers, ElementsAre(3, -4));
    EXPECT_THAT(bones[0].UserData[2].Floats, ElementsAre(2.5F));
    EXPECT_EQ(FindBone(document.Model->Bones, "hand"), 2);
    EXPECT_EQ(FindBone(document.Model->Bones, "foot"), -1);
}

TEST(ReadDocument, StreamsAreDequantised)
{
    const Document document = ReadGood("house.qmdl");
    const Shape& quad = document.Model->Shapes[0];
    EXPECT_EQ(quad.VertexCount, 4U);
    const VertexStream* const positions = FindStream(quad, "Position");
    ASSERT_NE(positions, nullptr);
    const double half = 16384 * 6.1037e-05;
    const auto low = static_cast<float>(1 - half);
    const auto high = static_cast<float>(1 + half);
    const auto side = static_cast<float>(half);
    EXPECT_THAT(positions->Values, ElementsAre(-side, low, 2, side, low, 2, side, high, 2, -side, high, 2));
    const VertexStream* const normals = FindStream(quad, "Normal");
    ASSERT_NE(normals, nullptr);
    EXPECT_TRUE(normals->IsConstant);
    EXPECT_THAT(normals->Values, ElementsAre(0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1));
    EXPECT_EQ(FindStream(quad, "Tangent"), nullptr);
    EXPECT_EQ(quad.BoundingBox.CenterPosition, (Vector3{0, 1, 2}));
    const Shape& strip = document.Model->Shapes[1];
    EXPECT_FLOAT_EQ(FindStream(strip, "Color")->Values[19], 128 * 0.00392157F);
}

/// A few indices in a small file must not make thousands of vertices.
TEST(ReadDocument, ShapesOfConstantsHaveNoMoreVerticesThanIndices)
{
    const struct
    {
        const char* Indices;
        std::size_t VertexCount;
    } cases[] = {{"0 1 2", 3}, {"0 0 0", 1}, {"0 1 0", 2}, {"0 1 65535", 3}, {"0 1 2147483647", 3}, {"", 0}};

    const std::string good = test::DocumentText("house.qmdl");
    const std::size_t start = good.find("<VertexAttributes>");
    const std::size_t end = good.find("</VertexAttributes>");
    const std::string constants =
        good.substr(0, start) + "<VertexAttributes>" +
        R"(<Vector3VertexAttributeQtr Usage="Position" Scale="1">1 2 3</Vector3VertexAttributeQtr>)" +
        good.substr(end);
    for (const auto& [indices, count] : cases) {
        const test::ReadResult result = test::ReadText(
            FileKind::Model, test::Replaced(constants, ">0 1 2 0 2 3<", ">" + std::string(indices) + "<"));
        ASSERT_TRUE(result.Content && result.Content->Model) << indices;
        const Shape& shape = result.Content->Model->Shapes.at(0);
        EXPECT_EQ(shape.VertexCount, count) << indices;
        EXPECT_EQ(shape.Streams.at(0).Values.size(), 3 * count) << indices;
    }
}

TEST(ReadDocument, InfluencesComeFromThePaletteOfTheSet)
{
    const Document document = ReadGood("house.qmdl");
    const Shape& strip = document.Model->Shapes[1];
    const auto blended = InfluencesOf(strip, strip.Sets[0], 0);
    ASSERT_EQ(blended.size(), 2U);
    EXPECT_EQ(blended[0].Bone, 1);
    EXPECT_FLOAT_EQ(blended[0].Weight, 0.75F);
    EXPECT_EQ(blended[1].Bone, 2);
    EXPECT_FLOAT_EQ(blended[1].Weight, 0.25F);
    EXPECT_EQ(InfluencesOf(strip, strip.Sets[0], 3).at(0).Bone, 1);
    EXPECT_EQ(InfluencesOf(strip, strip.Sets[1], 3).at(0).Bone, 2);
    const Shape& quad = document.Model->Shapes[0];
    EXPECT_EQ(InfluencesOf(quad, quad.Sets[0], 2).at(0).Bone, 3);
    EXPECT_TRUE(InfluencesOf(strip, strip.Sets[0], 1000).empty());
}

TEST(ReadDocument, TrianglesOfAllModes)
{
    using Triangles = std::vector<std::array<std::uint32_t, 3>>;
    const std::vector<std::uint32_t> indices = {5, 6, 7, 8, 9};
    EXPECT_EQ(ListTriangles({"Triangles", true, indices, 0}), (Triangles{{5, 6, 7}}));
    EXPECT_EQ(ListTriangles({"TriangleStrip", true, indices, 0}),
              (Triangles{{5, 6, 7}, {7, 6, 8}, {7, 8, 9}}));
    EXPECT_EQ(ListTriangles({"TriangleFan", true, indices, 0}), (Triangles{{5, 6, 7}, {5, 7, 8}, {5, 8, 9}}));
    EXPECT_EQ(ListTriangles({"Lines", true, indices, 0}), Triangles());
    EXPECT_EQ(ListTriangles({"TriangleFan", true, {1, 2}, 0}), Triangles());
}

TEST(ReadDocument, Material)
{
    const Document document = ReadGood("house.qmdl");
    const Material* const roof = FindMaterial(*document.Model, "Roof");
    ASSERT_NE(roof, nullptr);
    EXPECT_EQ(FindMaterial(*document.Model, "Door"), nullptr);
    EXPECT_EQ(roof->TranslucencyKind, "Translucent");
    EXPECT_THAT(roof->Diffuse, ElementsAre(FloatEq(0.8F), FloatEq(0.4F), FloatEq(0.2F), FloatEq(0.5F)));
    EXPECT_EQ(roof->CullingMode, "BackFace");
    ASSERT_EQ(roof->Coordinators.size(), 1U);
    EXPECT_EQ(roof->Coordinators[0].ScaleS, 2.0F);
    EXPECT_FLOAT_EQ(roof->Coordinators[0].Rotate, 0.785398F);
    EXPECT_EQ(roof->Coordinators[0].TranslateT, -0.125F);
    ASSERT_EQ(roof->Mappers.size(), 1U);
    EXPECT_EQ(roof->Mappers[0].Texture.Name, "Tiles");
    EXPECT_EQ(roof->Mappers[0].Texture.Path, "Textures/Tiles.qtex");
    EXPECT_EQ(roof->Mappers[0].WrapT, "ClampToEdge");
    EXPECT_EQ(roof->Mappers[0].BorderColor[3], 1.0F);
    const FragmentShader& shader = roof->Shader;
    EXPECT_EQ(shader.LayerConfig, 0);
    EXPECT_TRUE(shader.IsDistribution0Enabled);
    EXPECT_TRUE(shader.Distribution0.HasTable);
    EXPECT_EQ(shader.Distribution0.TableName, "Specular");
    EXPECT_FALSE(shader.Fresnel.HasTable);
    ASSERT_EQ(shader.Combiners.size(), 2U);
    EXPECT_THAT(shader.Combiners[0].SourceRgb, ElementsAre("FragmentPrimaryColor", "Texture0", "Constant"));
    EXPECT_EQ(shader.AlphaTestFunction, "Always");
    EXPECT_EQ(roof->Operation.BlendMode, "Blend");
    EXPECT_EQ(roof->Operation.Rgb.Destination, "OneMinusSourceAlpha");
    EXPECT_FALSE(roof->Operation.IsDepthMaskEnabled);
}

TEST(ReadDocument, SkeletalAnimation)
{
    const Document document = ReadGood("house.qskla");
    ASSERT_TRUE(document.SkeletalAnimation);
    const SkeletalAnimation& animation = *document.SkeletalAnimation;
    EXPECT_EQ(animation.Head.FrameSize, 20);
    EXPECT_TRUE(animation.Head.IsLoop);
    EXPECT_EQ(animation.StartFrame, 5);
    EXPECT_EQ(animation.EndFrame, 25);
    EXPECT_EQ(animation.FrameSteps, 2);
    EXPECT_DOUBLE_EQ(animation.RotateTolerance, 0.00174533);
    EXPECT_EQ(animation.TranslateQuantizeQuality, 3);
    EXPECT_EQ(FindBoneMember(animation, "hand"), nullptr);
    ASSERT_NE(FindBoneMember(animation, "arm"), nullptr);
    const Transform arm = EvaluateBone(animation, 1, 5);
    EXPECT_EQ(arm.Scale, (Vector3{1, 1, 1}));
    EXPECT_FLOAT_EQ(arm.Translate[0], 2.0F);
    EXPECT_FLOAT_EQ(arm.Translate[1], 0.5F);
    // Half of the way from 0 to 1 with the slopes 0 and 0.1 over ten frames: 0.5 - 10 * 0.1 / 8.
    EXPECT_FLOAT_EQ(arm.Rotate[2], 0.375F);
    EXPECT_EQ(EvaluateBone(animation, 2, 5).Translate, (Vector3{2, 0, 0}));
}

TEST(ReadDocument, VisibilityAnimation)
{
    const Document document = ReadGood("house.qmdla");
    ASSERT_TRUE(document.VisibilityAnimation);
    const MemberAnimation& member = document.VisibilityAnimation->Members.at(0);
    ASSERT_TRUE(member.Bool);
    EXPECT_TRUE(EvaluateBoolCurve(*member.Bool, 9));
    EXPECT_FALSE(EvaluateBoolCurve(*member.Bool, 12));
    EXPECT_TRUE(EvaluateBoolCurve(*member.Bool, 15));
}

TEST(ReadDocument, MaterialAnimation)
{
    const Document document = ReadGood("house.qmata");
    ASSERT_TRUE(document.MaterialAnimation);
    const MaterialAnimation& animation = *document.MaterialAnimation;
    ASSERT_EQ(animation.Members.size(), 4U);
    EXPECT_EQ(animation.Members[0].Kind, "IntAnimation");
    EXPECT_EQ(EvaluateCurve(*animation.Members[0].Channels[0], 5), 1.0F);
    EXPECT_EQ(animation.Members[1].Kind, "Vector2Animation");
    EXPECT_TRUE(animation.Members[1].Channels[0]);
    EXPECT_FALSE(animation.Members[1].Channels[1]);
    EXPECT_EQ(animation.Members[3].Kind, "RgbaColorAnimation");
    EXPECT_TRUE(animation.Members[3].Channels[0]);
    EXPECT_FALSE(animation.Members[3].Channels[2]);
    EXPECT_TRUE(animation.Members[3].Channels[3]);
    ASSERT_EQ(animation.Patterns.size(), 2U);
    EXPECT_EQ(animation.Patterns[1].Name, "Sky");
}

TEST(ReadDocument, Cameras)
{
    for (const char* const name : {"house.qcam", "house.qenv"}) {
        const Document document = ReadGood(name);
        const std::vector<Camera>& cameras = document.Stage.Cameras;
        ASSERT_EQ(cameras.size(), 3U) << name;
        EXPECT_EQ(cameras[0].ViewMode, "AimTarget");
        EXPECT_EQ(cameras[0].Twist, 0.25F);
        EXPECT_EQ(cameras[0].TargetPosition, (Vector3{0, 1, 0}));
        EXPECT_FLOAT_EQ(cameras[0].Fovy, 0.927295F);
        EXPECT_EQ(cameras[0].Local.Translate, (Vector3{1, 2, 3}));
        EXPECT_EQ(cameras[1].ViewMode, "LookAtTarget");
        EXPECT_EQ(cameras[1].UpwardVector, (Vector3{0, 1, 0}));
        EXPECT_TRUE(cameras[1].IsOrtho);
        EXPECT_EQ(cameras[1].Height, 10.0F);
        EXPECT_FALSE(cameras[1].IsBranchVisible);
        EXPECT_EQ(cameras[2].ViewMode, "Rotate");
        EXPECT_EQ(cameras[2].ViewRotate, (Vector3{0.5F, 0, 0}));
    }
    const Document document = ReadGood("house.qcam");
    ASSERT_EQ(document.Stage.CameraAnimations.size(), 1U);
    EXPECT_EQ(document.Stage.CameraAnimations[0].Head.Name, "aim");
    EXPECT_EQ(document.Stage.CameraAnimations[0].Members.size(), 2U);
    EXPECT_TRUE(document.Stage.CameraAnimations[0].Members[0].Translate[0]);
}

TEST(ReadDocument, Lights)
{
    for (const char* const name : {"house.qlgt", "house.qenv"}) {
        const Document document = ReadGood(name);
        const std::vector<Light>& lights = document.Stage.Lights;
        ASSERT_EQ(lights.size(), 4U) << name;
        EXPECT_EQ(lights[0].Kind, "Ambient");
        EXPECT_FLOAT_EQ(lights[0].Ambient[2], 0.2F);
        EXPECT_EQ(lights[1].Kind, "PointLight");
        EXPECT_EQ(lights[1].Diffuse[3], 1.5F);
        EXPECT_FALSE(lights[1].Angle.HasTable);
        EXPECT_EQ(lights[2].Kind, "SpotLight");
        EXPECT_EQ(lights[2].Angle.TableName, "spot");
        EXPECT_EQ(lights[3].Direction, (Vector3{0, -1, 0}));
        EXPECT_EQ(document.Stage.LookupTables.Name, "house.LightLutset");
    }
    const Document document = ReadGood("house.qlgt");
    ASSERT_EQ(document.Stage.LightAnimations.size(), 2U);
    EXPECT_EQ(document.Stage.LightAnimations[0].LightType, "Fragment");
    ASSERT_TRUE(document.Stage.LightAnimations[0].Members[1].Bool);
    EXPECT_TRUE(document.Stage.LightAnimations[0].Members[1].Bool->DefaultValue);
}

TEST(ReadDocument, FramesWithoutContentAreFine)
{
    const std::string frame = test::DocumentText("../core/pipeline/empty-frame.xml");
    for (const FileKind kind :
         {FileKind::SkeletalAnimation, FileKind::MaterialAnimation, FileKind::VisibilityAnimation,
          FileKind::Camera, FileKind::Light, FileKind::Environment}) {
        const test::ReadResult result = test::ReadText(kind, frame);
        EXPECT_EQ(result.Findings, Texts()) << ExtensionOf(kind);
        ASSERT_TRUE(result.Content);
        EXPECT_FALSE(result.Content->SkeletalAnimation || result.Content->MaterialAnimation ||
                     result.Content->VisibilityAnimation);
        EXPECT_TRUE(result.Content->Stage.Cameras.empty() && result.Content->Stage.Lights.empty());
    }
}

/// Every cut of every kind: one finding at least, never a document without one.
TEST(ReadDocument, TruncatedFilesGiveAFinding)
{
    for (const char* const name : {"house.qmdl", "Textures/Tiles.qtex", "house.qskla", "house.qmata",
                                   "house.qmdla", "house.qcam", "house.qlgt"}) {
        const std::string text = test::DocumentText(name);
        const std::size_t step = 1 + text.size() / 150;
        for (std::size_t size = 0; size + 2 < text.size(); size += step) {
            const std::vector<char> exact(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(size));
            FindingList findings("file");
            const auto document = ReadDocumentText(*KindOf(name), {exact.data(), exact.size()}, findings);
            EXPECT_FALSE(document) << name << " cut at " << size;
            EXPECT_TRUE(findings.HasErrors()) << name << " cut at " << size;
        }
    }
}

/// Changed bytes may be anything from harmless to fatal; reading and checking must survive them.
TEST(ReadDocument, DamagedFilesAreSurvived)
{
    tq4x::test::TemporaryFolder folder;
    std::uint32_t random = 12345;
    std::size_t broken = 0;
    for (const char* const name : {"house.qmdl", "house.qskla", "house.qmata", "house.qmdla", "house.qcam",
                                   "house.qlgt", "Textures/Tiles.qtex"}) {
        const std::string good = test::DocumentText(name);
        for (int round = 0; round < 60; ++round) {
            std::string text = good;
            random = random * 1664525 + 1013904223;
            const char bytes[] = {'9', '-', 'e', '"', '<', '>', ' ', '\0'};
            text[random % text.size()] = bytes[(random >> 24) % sizeof(bytes)];
            const std::filesystem::path file = folder / std::filesystem::path(name).filename().string();
            test::WriteFile(file, text);
            const CheckResult result = CheckFiles(std::vector{file});
            broken += result.Findings.empty() ? 0 : 1;
        }
    }
    EXPECT_GT(broken, 100U);
}

} // namespace
} // namespace tq4x::reader
