#include "support/ExportRun.h"
#include "support/Golden.h"
#include "support/PlatformGuard.h"
#include "support/TgaBuilder.h"
#include "support/ToolInstallation.h"

namespace tq4x::test
{
namespace
{

using testing::IsEmpty;

const std::vector<float> SquareUvs = {0, 0, 1, 0, 1, 1, 0, 1};

/// An export whose files are the same on every machine and at every time.
class FixedRun
{
public:
    explicit FixedRun(std::vector<std::string> options = {})
    {
        m_platform.FixUserAndTime();
        m_run.emplace(std::move(options));
        EXPECT_TRUE(m_run->Succeeded());
    }

    std::string File(const std::string& name) const { return m_run->File(name); }

    /// The section of the materials of the model file.
    std::string Materials() const
    {
        const std::string file = File("out.qmdl");
        const std::string end = "</Materials>\n";
        const std::size_t first = file.find("\t\t\t\t<Materials>");
        const std::size_t last = file.find(end);
        if (first == std::string::npos || last == std::string::npos)
            return "no materials";
        return file.substr(first, last + end.size() - first);
    }

    std::vector<std::string> Messages() const { return m_run->Messages(); }

private:
    PlatformGuard m_platform;
    ToolInstallation m_tool;
    std::optional<ExportRun> m_run;
};

TEST(MaterialFiles, PhongWithEverything)
{
    SceneBuilder scene;
    SceneMaterial material =
        scene.Material("roof", "phong")
            .Color("specular", 0.5, 0.25, 0.125, 1)
            .Set("shiny", 20.0)
            .Color("transparency", 0.25, 0, 0)
            .Color("incandescence", 0.5, 0.5, 0.5, 0)
            .Set("inc_inten", 0.5)
            .Image("diffuse", "folder/tiles.png", "Set")
            .NormalMap("folder/bumps.png", "Set")
            .Marked("TQ4X_ForPennonMaterialAttrProp", {{"TQ4X_ForPennonMatAttrCullFace", LONG{3}},
                                                       {"TQ4X_ForPennonMatAttrFragmentLighting", true},
                                                       {"TQ4X_ForPennonMatAttrVertexLighting", true},
                                                       {"TQ4X_ForPennonMatAttrBlendMode", LONG{-1}},
                                                       {"TQ4X_ForPennonMatAttrNoCompress", true}})
            .Marked("TQ4X_ForPennonUserDataProp", {{"TQ4X_ForPennonUserDataParamNameList", "age"},
                                                   {"TQ4X_ForPennonUserDataParamTypeList", "Integer"},
                                                   {"TQ4X_ForPennonUserDataParamValueList", "7"}});
    scene.Mesh("house").Square(material).Uvs("Set", SquareUvs,
                                             {{"projsclu", 2.0},
                                              {"projsclv", 0.5},
                                              {"projrotw", 45.0},
                                              {"projtrsu", 0.25},
                                              {"wrap_u", true},
                                              {"wrap_v", false}});
    const FixedRun run({"OutputQtex:false"});
    EXPECT_THAT(run.Messages(), IsEmpty());
    ExpectGolden(run.Materials(), "host/collect/materials-phong.xml");
}

TEST(MaterialFiles, Ward)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("silk", "ward").Color("glossy", 0.5, 0.5, 0.5, 1);
    scene.Mesh("cloth").Square(material);
    const FixedRun run;
    EXPECT_THAT(run.Messages(), IsEmpty());
    ExpectGolden(run.Materials(), "host/collect/materials-ward.xml");
}

TEST(MaterialFiles, Constant)
{
    SceneBuilder scene;
    SceneMaterial material =
        scene.Material("sign", "constant").Color("color", 1, 0.5, 0.25).Color("transparency", 0.5, 0, 0);
    scene.Mesh("plate").Square(material).Colors("Colors", std::vector<float>(16, 0.0f));
    const FixedRun run;
    EXPECT_THAT(run.Messages(), IsEmpty());
    ExpectGolden(run.Materials(), "host/collect/materials-constant.xml");
}

TEST(MaterialFiles, UnsupportedShader)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("paint", "Somebody.toon.1.0").Layer("splash.png", "Set");
    scene.Mesh("wall").Square(material).Uvs("Set", SquareUvs);
    const FixedRun run({"OutputQtex:false"});
    EXPECT_THAT(run.Messages(), testing::ElementsAre("W Shader is not supported(Somebody.toon.1.0)"));
    ExpectGolden(run.Materials(), "host/collect/materials-unsupported.xml");
}

TEST(MaterialFiles, ATextureSequenceAndAMovingColour)
{
    SceneBuilder scene;
    scene.Frames(0, 4);
    SceneMaterial material =
        scene.Material("flame", "lambert").Animate("diffuse_inuse", {{0, 1}, {1, 1}, {2, 0}});
    const XSI::Texture texture = material.MakeTexture("fire1.png", "Set");
    XSI::Host::SetSequence(texture.GetImageClip(), "fire[1..2;2].png", 1, 2, 1, 0.5);
    material.Connect("diffuse", texture);
    scene.Mesh("torch").Square(material).Uvs("Set", SquareUvs);
    const FixedRun run({"OutputQmata:true", "OutputQtex:false"});
    EXPECT_THAT(run.Messages(), IsEmpty());
    ExpectGolden(run.File("out.qmata"), "host/collect/sequence-and-color.qmata");
}

TEST(MaterialFiles, AMovingProjection)
{
    SceneBuilder scene;
    scene.Frames(0, 4);
    SceneMaterial material = scene.Material("water", "lambert").Image("diffuse", "waves.png", "Set");
    SceneMesh mesh = scene.Mesh("pond").Square(material);
    const XSI::ClusterProperty set =
        XSI::Host::AddClusterProperty(mesh.Object(), XSI::Host::ClusterPropertyKind::Uv, "Set", 2, SquareUvs);
    XSI::Host::SetCurve(XSI::Host::AddProjection(set).GetParameter(L"projtrsu"), {{{0, 0}, {4, 1}}});
    const FixedRun run({"OutputQmata:true", "OutputQtex:false"});
    EXPECT_THAT(run.Messages(), IsEmpty());
    ExpectGolden(run.File("out.qmata"), "host/collect/moving-projection.qmata");
}

TEST(MaterialFiles, WithoutMovementThereAreNoAnimations)
{
    SceneBuilder scene;
    scene.Frames(0, 4);
    SceneMaterial material = scene.Material("stone", "lambert").Image("diffuse", "stone.png", "Set");
    scene.Mesh("wall").Square(material).Uvs("Set", SquareUvs);
    const FixedRun run({"OutputQmata:true", "OutputQtex:false"});
    EXPECT_THAT(run.File("out.qmata"), testing::Not(testing::HasSubstr("Animations")));
}

/// A picture of the host, rows from the bottom: red grows to the right, green to the top.
std::shared_ptr<XSI::ImageData> MakeRamp()
{
    auto picture = MakePicture(8, 8);
    for (std::size_t y = 0; y < 8; ++y)
        for (std::size_t x = 0; x < 8; ++x) {
            picture->Pixels[(y * 8 + x) * 4] = static_cast<std::byte>(32 * x);
            picture->Pixels[(y * 8 + x) * 4 + 1] = static_cast<std::byte>(32 * y);
            picture->Pixels[(y * 8 + x) * 4 + 2] = std::byte{0};
        }
    return picture;
}

TEST(MaterialFiles, APlainTexture)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert");
    const XSI::Texture texture = material.MakeTexture("folder/ramp.png", "Set");
    XSI::Host::SetPixels(texture.GetImageClip(), MakeRamp());
    material.Connect("diffuse", texture);
    scene.Mesh("plate").Square(material).Uvs("Set", SquareUvs);
    const FixedRun run;
    EXPECT_THAT(run.Messages(), IsEmpty());
    ExpectGolden(run.File("Textures/ramp.qtex"), "host/collect/ramp.qtex");
}

/// A cross of six grey faces on black.
TgaFile MakeCross()
{
    TgaFile file;
    file.ImageType = 3;
    file.PixelBits = 8;
    file.Width = 32;
    file.Height = 24;
    file.Descriptor = 0x20; // rows from the top
    for (int y = 0; y < 24; ++y)
        for (int x = 0; x < 32; ++x) {
            const bool isFace = y / 8 == 1 || x / 8 == 1;
            file.Data.push_back(static_cast<std::uint8_t>(isFace ? 16 * (1 + x / 8 + 4 * (y / 8)) : 0));
        }
    return file;
}

TEST(MaterialFiles, ACubeTexture)
{
    TemporaryFolder folder;
    const std::string path = (folder / "sky.tga").string();
    const Bytes bytes = MakeCross().Build();
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", path, "Set");
    scene.Mesh("dome").Square(material).Uvs("Set", SquareUvs);
    const FixedRun run;
    EXPECT_THAT(run.Messages(), IsEmpty());
    std::string file = run.File("Textures/sky.qtex");
    const std::size_t at = file.find(path);
    ASSERT_NE(at, std::string::npos);
    ExpectGolden(file.replace(at, path.size(), "sky.tga"), "host/collect/sky.qtex");
}

} // namespace
} // namespace tq4x::test
