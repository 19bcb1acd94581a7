#include "support/ExportRun.h"
#include "support/TgaBuilder.h"
#include "support/ToolInstallation.h"

#include <algorithm>

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<float> SquareUvs = {0, 0, 1, 0, 1, 1, 0, 1};

/// A square with one material of its own.
void AddPlate(SceneBuilder& scene, const std::string& name, const XSI::CRef& material)
{
    scene.Mesh(name).Square(material).Uvs("Set", SquareUvs);
}

/// The names in the folder of the textures, sorted.
std::vector<std::string> TextureFiles(const ExportRun& run)
{
    std::vector<std::string> names;
    if (run.HasFile("Textures"))
        for (const auto& entry : std::filesystem::directory_iterator(run.Folder() / "Textures"))
            names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string WriteTga(const std::filesystem::path& path, const TgaFile& file)
{
    const Bytes bytes = file.Build();
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return path.string();
}

TgaFile PlainTga()
{
    TgaFile file;
    file.Data = Bytes(8 * 8 * 3, 77);
    return file;
}

TEST(TextureFiles, EachTextureHasItsFile)
{
    TemporaryFolder folder;
    const std::string tga = WriteTga(folder / "stone.tga", PlainTga());
    SceneBuilder scene;
    SceneMaterial material =
        scene.Material("m", "lambert").Image("diffuse", tga, "Set").Image("ambient", "wood.png", "Set");
    AddPlate(scene, "plate", material);
    const ToolInstallation tool;
    const ExportRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(run.Messages(), IsEmpty());
    EXPECT_THAT(TextureFiles(run), ElementsAre("stone.qtex", "wood.qtex"));
    EXPECT_TRUE(run.FileHolds("Textures/stone.qtex", "Path=\"" + tga + "\""));
    EXPECT_TRUE(run.FileHolds("out.qmdl", "Textures/wood.qtex"));
}

TEST(TextureFiles, NoneAreWrittenIfNoneAreWanted)
{
    SceneBuilder scene;
    SceneMaterial material =
        scene.Material("m", "lambert").Image("diffuse", "absent.tga", "Set").Image("ambient", "a.png", "Set");
    AddPlate(scene, "plate", material);
    const ToolInstallation tool;
    const ExportRun run({"OutputQtex:false"});
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(run.Messages(), IsEmpty());
    EXPECT_FALSE(run.HasFile("Textures"));
    EXPECT_TRUE(run.FileHolds("out.qmdl", "Textures/absent.qtex"));
}

// Each texture without a file has one line, whoever tells it.
TEST(TextureFiles, MissingOnesAreToldOnceAndTheRestGoesOn)
{
    TemporaryFolder folder;
    const std::string absent = (folder / "absent.tga").string();
    SceneBuilder scene;
    SceneMaterial first =
        scene.Material("first", "lambert").Image("diffuse", absent, "Set").Image("ambient", absent, "Set");
    SceneMaterial second = scene.Material("second", "lambert");
    const XSI::Texture thin = second.MakeTexture("thin.png", "Set");
    XSI::Host::SetPixels(thin.GetImageClip(), MakePicture(8, 8, 3));
    const XSI::Texture narrow = second.MakeTexture("narrow.png", "Set");
    XSI::Host::SetPixels(narrow.GetImageClip(), MakePicture(4, 8));
    const XSI::Texture deep = second.MakeTexture("deep.png", "Set");
    XSI::Host::SetPixels(deep.GetImageClip(), MakePicture(8, 8, 4, 8));
    second.Connect("diffuse", thin).Connect("ambient", narrow).Connect("transparency", deep);
    SceneMaterial third = scene.Material("third", "lambert").Image("diffuse", "wood.png", "Set");
    AddPlate(scene, "a", first);
    AddPlate(scene, "b", second);
    AddPlate(scene, "c", third);
    const ToolInstallation tool;
    const ExportRun run;
    EXPECT_TRUE(run.Succeeded());
    // The two clips of the missing file are two pictures, so that each is told about where it is collected.
    const std::string missing = "E Can't open file: " + absent + " (" + absent + ").";
    EXPECT_THAT(run.Messages(),
                ElementsAre(missing, missing, "E Only 4 channels per image supported (thin.png).",
                            "E Texture size is wrong: narrow.png (4 x 8)",
                            "E No texture data: deep.png (deep.png)."));
    EXPECT_THAT(TextureFiles(run), ElementsAre("wood.qtex"));
    EXPECT_TRUE(run.FileHolds("out.qmdl", "Textures/absent.qtex"));
}

TEST(TextureFiles, NormalMapsHaveTheirOwnFormat)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").NormalMap("bumps.png", "Set");
    AddPlate(scene, "plate", material);
    const ToolInstallation tool;
    const ExportRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_TRUE(run.FileHolds("Textures/bumps.qtex", "Format=\"Hilo8\""));
}

TEST(TextureFiles, TheFirstUseDecidesBetweenColourAndNormals)
{
    SceneBuilder scene;
    SceneMaterial colour = scene.Material("a", "lambert").Image("diffuse", "both.png", "Set");
    SceneMaterial normal = scene.Material("b", "lambert").NormalMap("both.png", "Set");
    AddPlate(scene, "plate", colour);
    AddPlate(scene, "plate2", normal);
    const ToolInstallation tool;
    const ExportRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(run.Messages(), IsEmpty());
    EXPECT_THAT(TextureFiles(run), ElementsAre("both.qtex"));
    EXPECT_FALSE(run.FileHolds("Textures/both.qtex", "Format=\"Hilo8\""));
}

TEST(TextureFiles, NamesThatChangeOrClashAreTold)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert")
                                 .Layer("one/dark wood.png", "Set")
                                 .Layer("two/dark wood.png", "Set")
                                 .Layer("two/stone.png", "Set");
    SceneMaterial other = scene.Material("n", "lambert").Image("diffuse", "three/stone.png", "Set");
    AddPlate(scene, "plate", material);
    AddPlate(scene, "plate2", other);
    const ToolInstallation tool;
    const ExportRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(run.Messages(),
                ElementsAre("W Texture name is changed(dark wood -> dark_wood)",
                            "W Texture name is changed(dark wood -> dark_wood)",
                            "W There are multiple texture files with the same name(dark wood)",
                            "W There are multiple texture files with the same name(stone)"));
    EXPECT_THAT(TextureFiles(run), ElementsAre("dark_wood.qtex", "stone.qtex"));
    EXPECT_TRUE(run.FileHolds("Textures/stone.qtex", "Path=\"two/stone.png\""));
}

TEST(TextureFiles, MaterialsOfOtherMeshesAreNotExported)
{
    SceneBuilder scene;
    SceneMaterial used = scene.Material("used", "lambert");
    scene.Material("unused", "lambert").Image("diffuse", "absent.tga", "Set");
    AddPlate(scene, "plate", used);
    const ToolInstallation tool;
    const ExportRun run;
    EXPECT_TRUE(run.Succeeded());
    EXPECT_THAT(run.Messages(), IsEmpty());
    EXPECT_FALSE(run.FileHolds("out.qmdl", "unused"));
    EXPECT_FALSE(run.HasFile("Textures"));
}

TEST(TextureFiles, TooManyStagesFailTheExport)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert");
    for (const char* file : {"a.png", "b.png", "c.png"})
        material.Layer(file, "Set");
    material.NormalMap("d.png", "Set");
    AddPlate(scene, "plate", material);
    const ToolInstallation tool;
    const ExportRun run;
    EXPECT_FALSE(run.Succeeded());
    EXPECT_THAT(run.Messages(), ElementsAre("E The number of composite texture is over 3(m)"));
    EXPECT_FALSE(run.HasFile("out.qmdl"));
}

} // namespace
} // namespace tq4x::test
