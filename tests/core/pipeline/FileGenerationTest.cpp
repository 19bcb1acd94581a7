#include "pipeline/FileGeneration.h"

#include "material/TextureImage.h"
#include "pipeline/PathText.h"
#include "scene/NodeTree.h"
#include "support/GeometryScene.h"
#include "support/Golden.h"
#include "support/MessageRecorder.h"
#include "support/WrittenFiles.h"

#include <fstream>
#include <sstream>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;
using test::MessageRecorder;
using test::ReadWholeFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const FrameRecord Record = {"ann", "2013-04-09T08:07:06", "house.scn",
                            "TQ4X_ForPennonExport for Softimage 2013", "0.5.3"};

/// The opening lines of a document's content, less what stands deeper than `depth` tabs.
std::string Outline(const std::string& text, std::size_t depth)
{
    std::istringstream lines(text);
    std::string outline, line;
    while (std::getline(lines, line)) {
        const std::size_t tabs = line.find_first_not_of('\t');
        if (tabs != std::string::npos && tabs <= depth && line[tabs + 1] != '/')
            outline += line + "\n";
    }
    return outline;
}

/// Samples of a channel that moves from 0 to 9 in as many frames.
std::vector<float> Ramp()
{
    std::vector<float> samples;
    for (int i = 0; i < 10; ++i)
        samples.push_back(static_cast<float>(i));
    return samples;
}

/// An export of one node into a folder of its own, with nothing selected.
class FileGeneration : public testing::Test
{
protected:
    FileGeneration()
    {
        Options.OutputFileName = "house";
        Options.OutputFolder = m_folder.Path().string();
        Options.OutputQmdl = Options.OutputQtex = false;
        Values.ExportEndFrame = 9.0;
        Content.Root = std::make_unique<Bone>();
        Content.Root->Name = "root";
        SetSample(*Content.Root, 0, Matrix44{});
    }

    bool Generate()
    {
        SetContentValues(Content, Lights, Cameras, Options);
        const FileProgress progress = {
            [this](int step) { Progress.push_back("step " + std::to_string(step)); },
            [this](const std::string& text) { Progress.push_back(text); },
            [this] { Progress.push_back("advance"); }};
        return GenerateFiles({Content, Lights, Cameras, Values, Record}, Options, progress);
    }

    std::string Text(const std::string& name) const { return ReadWholeFile(m_folder / name); }

    bool Exists(const std::string& name) const { return fs::exists(m_folder / name); }

    /// The files are broken on purpose in this way.
    void Break(std::string_view code) { m_folder.Break(code); }

    std::string Path(const std::string& name) const { return (m_folder / name).string(); }

    /// A texture of 8 x 8 pixels that needs no file.
    void AddTexture(const std::string& path)
    {
        const std::vector<std::uint8_t> pixels(8 * 8 * 4, 255);
        m_images.push_back(std::make_unique<TextureImage>());
        m_images.back()->SetPixels(pixels, 8, 8, false);
        m_images.back()->Path = path;
        Content.Materials.Textures.Add(path, false, m_images.back().get());
    }

    Material& AddMaterial(const std::string& name)
    {
        m_owners.push_back(std::make_unique<int>());
        Material& material = Content.Materials.MaterialFor(m_owners.back().get()).Material;
        material.Name = name;
        return material;
    }

    ExportOptions Options;
    SceneContent Content;
    LightSet Lights;
    CameraSet Cameras;
    ExportValues Values;
    std::vector<std::string> Progress;

private:
    test::WrittenFolder m_folder;
    MessageRecorder m_recorder;
    std::vector<std::unique_ptr<TextureImage>> m_images;
    std::vector<std::unique_ptr<int>> m_owners;
};

TEST_F(FileGeneration, ModelFile)
{
    Options.OutputQmdl = true;
    Options.Magnify = 2.0f;
    Options.NonUniformScale = true;
    Options.AdjustSkinning = 1;
    Values.ExportStartFrame = 4.0;
    EXPECT_TRUE(Generate());
    std::string text = Text("house.qmdl");
    // The group descriptions are the same in every model and have a golden of their own.
    const std::size_t groups = text.find("\t\t\t\t\t<GraphicsAnimationGroupDescription");
    text.erase(groups, text.find("\t\t\t\t</AnimationGroupDescriptions>") - groups);
    test::ExpectGolden(text, "core/pipeline/model-of-one-node.qmdl");
}

TEST_F(FileGeneration, ModelSectionsStandInTheirOrder)
{
    Options.OutputQmdl = true;
    Options.MeshVisibilityMode = 1;
    for (const float exponent : {10.0f, 20.0f}) {
        Material& material = AddMaterial(exponent < 15.0f ? "b" : "a");
        material.HasSpecularTable = true;
        material.SpecularExponent = exponent;
        material.BuildFragmentLighting(Content.Materials.LookupTables, false, 0);
    }
    EXPECT_TRUE(Generate());
    const std::string text = Text("house.qmdl");
    test::ExpectGolden(Outline(text, 4), "core/pipeline/model-outline.xml");
    EXPECT_THAT(text, HasSubstr("Name=\"MaterialCount\" Value=\"2\""));
}

TEST_F(FileGeneration, LookupTablesHaveUniqueNamesBeforeMaterialsReferToThem)
{
    Options.OutputQmdl = true;
    for (const float exponent : {10.0f, 20.0f}) {
        Material& material = AddMaterial("m" + std::to_string(exponent));
        material.HasSpecularTable = true;
        material.SpecularExponent = exponent;
        material.BuildFragmentLighting(Content.Materials.LookupTables, false, 0);
    }
    ASSERT_EQ(Content.Materials.LookupTables.Tables().size(), 2u);
    EXPECT_TRUE(Generate());
    const std::string second = Content.Materials.LookupTables.Tables()[1].Name;
    EXPECT_THAT(second, testing::EndsWith("_1"));
    const std::string text = Text("house.qmdl");
    EXPECT_LT(text.find(second), text.find("house.MaterialLutset"));
}

TEST_F(FileGeneration, MeshesReferToTheirMaterials)
{
    Break("TQ-REF-MATERIAL");
    Options.OutputQmdl = true;
    AddMaterial("unused");
    AddMaterial("wall").RenderPriority = 7;
    Content.Model.Meshes.push_back(std::make_unique<Mesh>(test::MakeMesh()));
    Mesh& mesh = *Content.Model.Meshes.back();
    mesh.NodeName = "root";
    mesh.Pool[VertexSlot::Position].Edit<Vector3>() = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    test::AddVertices(mesh, 1, {0, 1, 2});
    test::AddVertices(mesh, 5, {0, 1, 2});
    SetMesh(*Content.Root, &mesh);
    EXPECT_TRUE(Generate());
    const std::string text = Text("house.qmdl");
    EXPECT_THAT(text, HasSubstr("<MaterialReference>Materials[\"wall\"]</MaterialReference>"));
    EXPECT_THAT(text, HasSubstr("<MaterialReference>Materials[\"\"]</MaterialReference>"));
    EXPECT_THAT(text, HasSubstr("RenderPriority=\"7\""));
}

TEST_F(FileGeneration, VisibilityModesAreWords)
{
    const struct
    {
        std::uint32_t Mode;
        const char* Word;
        bool HasVisibilities;
    } cases[] = {{0, "BindByIndex", false}, {1, "BindByName", true}, {9, "BindByIndex", false}};

    for (const auto& row : cases) {
        Options.OutputQmdl = true;
        Options.MeshVisibilityMode = row.Mode;
        Content.Model = {};
        EXPECT_TRUE(Generate());
        const std::string text = Text("house.qmdl");
        EXPECT_THAT(
            text, HasSubstr("AdjustSkinning=\"None\" MeshVisibilityMode=\"" + std::string(row.Word) + "\">"));
        EXPECT_EQ(text.find("<MeshNodeVisibilities>") != std::string::npos, row.HasVisibilities) << row.Mode;
    }
}

TEST_F(FileGeneration, FilesWithoutContentHoldTheFrame)
{
    Options.OutputQskla = Options.OutputQmata = Options.OutputQcam = Options.OutputQmdla = true;
    Options.OutputQlgt = Options.OutputQenv = true;
    EXPECT_TRUE(Generate());
    const std::string frame = ReadWholeFile(fs::path(TQ4X_TEST_DATA) / "core/pipeline/empty-frame.xml");
    for (const char* extension : {"qskla", "qmata", "qcam", "qmdla", "qlgt", "qenv"})
        EXPECT_EQ(Text("house." + std::string(extension)), frame) << extension;
    EXPECT_FALSE(Exists("house.qmdl"));
    EXPECT_FALSE(Exists("Textures"));
}

TEST_F(FileGeneration, SkeletalAnimation)
{
    Options.OutputQskla = true;
    Options.LoopAnim = false;
    Options.FrameFormat = true;
    Options.ScaleQuantizeQuality = 1;
    Options.RotateQuantizeQuality = 2;
    Options.TranslateQuantizeQuality = 3;
    Values.FrameSteps = 2;
    Values.ExportStartFrame = 1.0;
    Values.Tolerances = {0.5f, 180.0f, 0.25f};
    Content.Root->IsForceTranslateKey = true;
    EXPECT_TRUE(Generate());
    const std::string text = Text("house.qskla");
    EXPECT_THAT(text, HasSubstr("FrameSize=\"8\" LoopMode=\"OneTime\" IsAdditiveAnimation=\"false\""));
    EXPECT_THAT(
        text, HasSubstr("<SkeletalAnimationBinarizeOption IsFrameFormat=\"true\" ScaleQuantizeQuality=\"1\" "
                        "RotateQuantizeQuality=\"2\" TranslateQuantizeQuality=\"3\"/>"));
    EXPECT_THAT(text, HasSubstr("StartFrame=\"1\" EndFrame=\"9\" Magnify=\"1\" KeepAtLeastOneKey=\"false\""));
    EXPECT_THAT(text, HasSubstr("FramePrecision=\"_1_2\" ScaleTolerance=\"0.5\" RotateTolerance=\"3.14159\" "
                                "TranslateTolerance=\"0.25\""));
}

TEST_F(FileGeneration, MaterialAnimation)
{
    Options.OutputQmata = true;
    Options.ToleranceColor = 0.25f;
    AddMaterial("wall").ColorCurves[0].Samples = Ramp();
    EXPECT_TRUE(Generate());
    test::ExpectGolden(Outline(Text("house.qmata"), 6), "core/pipeline/material-animation-outline.xml");
}

TEST_F(FileGeneration, MaterialAnimationIsFinishedOnlyIfItIsWanted)
{
    AddMaterial("wall").ColorCurves[0].Samples = Ramp();
    Options.OutputQmdl = true;
    EXPECT_TRUE(Generate());
    EXPECT_THAT(Content.Materials.Materials[0].Material.ColorCurves[0].Keys, IsEmpty());
}

TEST_F(FileGeneration, LightFile)
{
    Options.OutputQlgt = true;
    Light& light = Lights.Add();
    light.Name = "lamp";
    light.LightKind = LightKind::SpotLight;
    light.Translate = {1.0f, 2.0f, 3.0f};
    light.Curves[LightCurve::Visibility].Samples = {1.0f, 0.0f, 1.0f};
    SetSpotCone(light, 60.0f, 5.0f, Lights.LookupTables);
    Options.Magnify = 10.0f;
    EXPECT_TRUE(Generate());
    const std::string text = Text("house.qlgt");
    test::ExpectGolden(Outline(text, 4), "core/pipeline/light-outline.xml");
    EXPECT_THAT(text, HasSubstr("<Translate X=\"10\" Y=\"20\" Z=\"30\"/>"));
    EXPECT_THAT(text, HasSubstr("FrameSize=\"9\" LoopMode=\"Loop\""));
}

TEST_F(FileGeneration, CameraFile)
{
    Options.OutputQcam = true;
    Camera& camera = Cameras.Add();
    camera.Name = "eye";
    camera.Curves[6].Samples = Ramp();
    EXPECT_TRUE(Generate());
    test::ExpectGolden(Outline(Text("house.qcam"), 4), "core/pipeline/camera-outline.xml");
}

TEST_F(FileGeneration, EnvironmentFileHasNoAnimation)
{
    Options.OutputQenv = true;
    Cameras.Add().Name = "eye";
    Cameras.Cameras[0].Curves[6].Samples = Ramp();
    Light& light = Lights.Add();
    light.Name = "lamp";
    light.LightKind = LightKind::SpotLight;
    SetSpotCone(light, 60.0f, 5.0f, Lights.LookupTables);
    EXPECT_TRUE(Generate());
    test::ExpectGolden(Outline(Text("house.qenv"), 3), "core/pipeline/environment-outline.xml");
    EXPECT_THAT(Cameras.Cameras[0].Curves[6].Keys, IsEmpty());
}

TEST_F(FileGeneration, ModelAnimation)
{
    Options.OutputQmdla = true;
    Content.Model.Meshes.push_back(std::make_unique<Mesh>(test::MakeMesh()));
    Mesh& mesh = *Content.Model.Meshes.back();
    mesh.Pool[VertexSlot::Position].Edit<Vector3>() = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    test::AddVertices(mesh, 0, {0, 1, 2});
    SetMesh(*Content.Root, &mesh);
    for (const float value : {1.0f, 1.0f, 0.0f})
        AppendVisibility(*Content.Root, value);
    EXPECT_TRUE(Generate());
    test::ExpectGolden(Outline(Text("house.qmdla"), 7), "core/pipeline/model-animation-outline.xml");
}

TEST_F(FileGeneration, TexturesGoIntoTheirFolder)
{
    Options.OutputQtex = true;
    AddTexture("/pictures/wall.tga");
    AddTexture("/pictures/roof.tga");
    EXPECT_TRUE(Generate());
    EXPECT_THAT(Text("Textures/wall.qtex"), HasSubstr("Path=\"/pictures/wall.tga\""));
    EXPECT_THAT(Text("Textures/roof.qtex"),
                HasSubstr("<Create Author=\"ann\" Date=\"2013-04-09T08:07:06\" Source=\"house.scn\">"));
    EXPECT_THAT(TextureFileNames(Content.Materials), ElementsAre("roof", "wall"));
    EXPECT_THAT(Progress, ElementsAre("step 2000", "Generate qtex files...", "advance"));
}

TEST_F(FileGeneration, OneTexture)
{
    Options.OutputQtex = true;
    AddTexture("wall.tga");
    EXPECT_TRUE(Generate());
    EXPECT_THAT(Progress, ElementsAre("step 2000", "Generate qtex file...", "advance"));
}

TEST_F(FileGeneration, NoTexturesNoStageNoStep)
{
    Options.OutputQtex = true;
    EXPECT_TRUE(Generate());
    EXPECT_THAT(Progress, IsEmpty());
    EXPECT_FALSE(Exists("Textures"));
}

TEST_F(FileGeneration, StagesInTheirOrder)
{
    for (bool ExportOptions::*kind :
         {&ExportOptions::OutputQmdl, &ExportOptions::OutputQtex, &ExportOptions::OutputQskla,
          &ExportOptions::OutputQmata, &ExportOptions::OutputQlgt, &ExportOptions::OutputQcam,
          &ExportOptions::OutputQmdla, &ExportOptions::OutputQenv})
        Options.*kind = true;
    AddTexture("wall.tga");
    EXPECT_TRUE(Generate());
    EXPECT_THAT(Progress, ElementsAre("step 250", "Generate qmdl file...", "advance",
                                      "Generate qskla file...", "advance", "Generate qmata file...",
                                      "advance", "Generate qlgt file...", "advance", "Generate qcam file...",
                                      "advance", "Generate qmdla file...", "advance", "Generate qenv file...",
                                      "advance", "Generate qtex file...", "advance"));
}

TEST_F(FileGeneration, AFileThatCannotBeOpenedEndsGeneration)
{
    Options.OutputQmdl = Options.OutputQlgt = Options.OutputQcam = Options.OutputQtex = true;
    AddTexture("wall.tga");
    fs::create_directory(Path("house.qlgt"));
    EXPECT_FALSE(Generate());
    EXPECT_TRUE(Exists("house.qmdl"));
    EXPECT_FALSE(Exists("house.qcam"));
    EXPECT_FALSE(Exists("Textures"));
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("E Can't open file(" + Path("house.qlgt") + ")"));
    EXPECT_THAT(Progress,
                ElementsAre("step 500", "Generate qmdl file...", "advance", "Generate qlgt file..."));
}

TEST_F(FileGeneration, AFolderOfTexturesThatCannotBeMadeEndsGeneration)
{
    Options.OutputQtex = true;
    AddTexture("wall.tga");
    std::ofstream(Path("Textures")) << "";
    EXPECT_FALSE(Generate());
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("E Can't create folder(" + Path("Textures") + ")."));
}

TEST_F(FileGeneration, ATextureFileThatCannotBeOpenedEndsGeneration)
{
    Options.OutputQtex = true;
    AddTexture("wall.tga");
    fs::create_directories(Path("Textures/wall.qtex"));
    EXPECT_FALSE(Generate());
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("E Can't open file(" + AppendPath(Path("Textures"), "wall.qtex") + ")"));
}

TEST_F(FileGeneration, ExtensionsAreAppendedNeverReplaced)
{
    Options.OutputFileName = "a.b";
    Options.OutputFolder += "\\";
    Options.OutputQmdla = true;
    EXPECT_TRUE(Generate());
    EXPECT_TRUE(Exists("a.b.qmdla"));
}

TEST_F(FileGeneration, WithoutAnyNodeTheOtherFilesAreWritten)
{
    Content.Root = nullptr;
    Options.OutputQskla = Options.OutputQmdla = Options.OutputQlgt = true;
    Lights.Add().Name = "lamp";
    EXPECT_TRUE(Generate());
    EXPECT_THAT(Text("house.qlgt"), HasSubstr("<FragmentLightQtr Name=\"lamp\""));
    EXPECT_THAT(Text("house.qskla"), Not(HasSubstr("Animations")));
}

TEST_F(FileGeneration, ProgressIsOptional)
{
    Options.OutputQenv = true;
    EXPECT_TRUE(GenerateFiles({Content, Lights, Cameras, Values, Record}, Options, {}));
    EXPECT_TRUE(Exists("house.qenv"));
}

TEST_F(FileGeneration, ContentValues)
{
    Options.OutputQmata = true;
    Options.Magnify = 3.0f;
    SetContentValues(Content, Lights, Cameras, Options);
    EXPECT_TRUE(Content.Materials.HasAnimation);
    EXPECT_EQ(Lights.Magnify, 3.0f);
    EXPECT_EQ(Cameras.Magnify, 3.0f);
}

} // namespace
} // namespace tq4x
