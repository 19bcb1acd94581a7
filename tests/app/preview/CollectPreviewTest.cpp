#include "preview/CollectPreview.h"

#include <gmock/gmock.h>

#include "support/Golden.h"
#include "support/TemporaryFolder.h"

namespace tq4x::preview
{
namespace
{

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

/// A folder with copies of good written files.
class CollectPreviewTest : public testing::Test
{
protected:
    CollectPreviewTest()
    {
        fs::copy(fs::path(TQ4X_TEST_DATA) / "reader", Folder.Path(), fs::copy_options::recursive);
    }

    PreviewData Collect(const std::vector<std::string>& names) const
    {
        PreviewData data;
        data.Folder = Folder.Path().string();
        std::vector<cli::WrittenFiles::File> files;
        for (const std::string& name : names) {
            std::error_code error;
            files.push_back({Folder / name, fs::file_size(Folder / name, error)});
        }
        CollectPreview(data, files);
        return data;
    }

    void Replace(const std::string& name, const std::string& from, const std::string& to) const
    {
        std::string text = tq4x::test::ReadWholeFile(Folder / name);
        const std::size_t at = text.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        std::ofstream(Folder / name, std::ios::binary) << text.replace(at, from.size(), to);
    }

    tq4x::test::TemporaryFolder Folder;
};

TEST_F(CollectPreviewTest, TellsOfEveryKindOfFile)
{
    const PreviewData data = Collect({"house.qmdl", "house.qskla", "house.qmata", "house.qlgt", "house.qcam",
                                      "house.qmdla", "Textures/Sky.qtex", "Textures/Tiles.qtex"});
    EXPECT_EQ(data.Author, "ann");
    EXPECT_EQ(data.Date, "2013-04-09T08:07:06");
    EXPECT_THAT(data.Findings, IsEmpty());
    const std::vector<std::string> kinds = {"model",   "bone animation", "material animation",
                                            "light",   "camera",         "visibility animation",
                                            "texture", "texture"};
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        EXPECT_EQ(data.Files.at(i).Kind, kinds[i]) << data.Files[i].Path;
    }
    ASSERT_THAT(data.Scenes, SizeIs(1));
    EXPECT_THAT(data.Scenes[0].Glb, StartsWith("glTF"));
    EXPECT_EQ(data.Scenes[0].Problem, "");
    EXPECT_THAT(data.Scenes[0].Bones, ElementsAre("root", "arm", "hand", "house"));
}

TEST_F(CollectPreviewTest, TellsOfMeshesAndMaterials)
{
    const PreviewScene scene = Collect({"house.qmdl"}).Scenes.at(0);
    ASSERT_THAT(scene.Meshes, SizeIs(2));
    const PreviewMesh& arm = scene.Meshes[1];
    EXPECT_EQ(arm.Node, "arm");
    EXPECT_EQ(arm.Material, "Wall");
    EXPECT_EQ(arm.Skinning, "SmoothSkinning");
    EXPECT_TRUE(scene.Meshes[0].IsVisible);
    EXPECT_FALSE(arm.IsVisible); // its node is not, by the list of nodes
    EXPECT_EQ(arm.Vertices, 5U);
    EXPECT_EQ(arm.Triangles, 3U);
    EXPECT_EQ(arm.Sets, 2U);
    ASSERT_THAT(arm.Streams, SizeIs(4));
    EXPECT_EQ(arm.Streams[1].Usage, "Color");
    EXPECT_EQ(arm.Streams[1].Mode, "Ubyte");
    EXPECT_EQ(arm.Streams[1].Dimension, 4U);
    EXPECT_FALSE(arm.Streams[1].IsConstant);
    EXPECT_TRUE(scene.Meshes[0].Streams[1].IsConstant);
    ASSERT_THAT(scene.Materials, SizeIs(2));
    const PreviewMaterial& roof = scene.Materials[0];
    EXPECT_EQ(roof.Name, "Roof");
    EXPECT_EQ(roof.Diffuse, (reader::Color{0.8F, 0.4F, 0.2F, 0.5F}));
    EXPECT_THAT(roof.Textures, ElementsAre("Tiles"));
    EXPECT_EQ(roof.Culling, "BackFace");
    EXPECT_EQ(roof.Blend, "Blend");
    EXPECT_TRUE(roof.IsLit);
    EXPECT_EQ(roof.Users, 1U);
}

TEST_F(CollectPreviewTest, TellsOfTextures)
{
    const PreviewData data = Collect({"house.qmdl", "Textures/Sky.qtex", "Textures/Tiles.qtex"});

    const struct
    {
        std::string Name;
        std::string Format;
        bool IsCube;
        std::size_t Levels;
        std::size_t Bytes;
    } rows[] = {{"Sky", "L4", true, 1, 192}, {"Tiles", "L8", false, 2, 80}};

    ASSERT_THAT(data.Textures, SizeIs(std::size(rows)));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const PreviewTexture& texture = data.Textures[i];
        EXPECT_EQ(texture.Name, rows[i].Name);
        EXPECT_EQ(texture.File, "Textures/" + rows[i].Name + ".qtex");
        EXPECT_EQ(texture.Format, rows[i].Format) << texture.Name;
        EXPECT_EQ(texture.IsCube, rows[i].IsCube) << texture.Name;
        EXPECT_EQ(texture.Levels, rows[i].Levels) << texture.Name;
        EXPECT_EQ(texture.Bytes, rows[i].Bytes) << texture.Name;
        EXPECT_EQ(texture.Width, 8) << texture.Name;
        EXPECT_EQ(texture.Height, 8) << texture.Name;
        EXPECT_THAT(texture.Thumbnail, StartsWith("\x89PNG")) << texture.Name;
    }
}

TEST_F(CollectPreviewTest, TellsOfClipsCamerasAndLights)
{
    const PreviewData data =
        Collect({"house.qskla", "house.qmata", "house.qmdla", "house.qlgt", "house.qcam"});

    const struct
    {
        std::string Name;
        std::string Kind;
        bool IsLoop;
        std::size_t Members;
    } clips[] = {
        {"house", "bones", true, 1},
        {"house", "materials", false, 4},
        {"house", "visibility", false, 1},
        {"lamp.LightAnimation", "light", true, 2},
        {"AmbientLight.LightAnimation", "light", true, 1},
        {"aim", "camera", false, 2},
    };

    ASSERT_THAT(data.Clips, SizeIs(std::size(clips)));
    for (std::size_t i = 0; i < std::size(clips); ++i) {
        EXPECT_EQ(data.Clips[i].Name, clips[i].Name);
        EXPECT_EQ(data.Clips[i].Kind, clips[i].Kind) << clips[i].Name;
        EXPECT_EQ(data.Clips[i].IsLoop, clips[i].IsLoop) << clips[i].Name;
        EXPECT_EQ(data.Clips[i].Members, clips[i].Members) << clips[i].Name;
        EXPECT_EQ(data.Clips[i].Frames, 20) << clips[i].Name;
    }
    ASSERT_THAT(data.Cameras, SizeIs(3));
    EXPECT_EQ(data.Cameras[0].Facts, "perspective, 53.13° high, from 0.1 to 100");
    EXPECT_EQ(data.Cameras[1].Facts, "orthographic, 10 high, from 1 to 50");
    EXPECT_EQ(data.Cameras[1].File, "house.qcam");

    const struct
    {
        std::string Name;
        std::string Facts;
    } lights[] = {
        {"AmbientLight", "ambient"},
        {"lamp", "point, intensity 1.5"},
        {"spot", "spot, intensity 1.5"},
        {"sun", "directional, intensity 1.5"},
    };

    ASSERT_THAT(data.Lights, SizeIs(std::size(lights)));
    for (std::size_t i = 0; i < std::size(lights); ++i) {
        EXPECT_EQ(data.Lights[i].Name, lights[i].Name);
        EXPECT_EQ(data.Lights[i].Facts, lights[i].Facts) << lights[i].Name;
    }
}

TEST_F(CollectPreviewTest, ShowsWhatThereIsWithoutAModel)
{
    const struct
    {
        const char* Name;
        std::vector<std::string> Files;
        std::size_t Textures;
        std::size_t Clips;
        std::size_t Cameras;
        std::size_t Lights;
        std::size_t Bones;
    } cases[] = {
        {"textures", {"Textures/Sky.qtex"}, 1, 0, 0, 0, 0},
        {"cameras", {"house.qcam"}, 0, 1, 3, 0, 0},
        {"animation", {"house.qskla"}, 0, 1, 0, 0, 4},
        {"nothing", {}, 0, 0, 0, 0, 0},
    };

    for (const auto& row : cases) {
        const PreviewData data = Collect(row.Files);
        EXPECT_EQ(data.Files.size(), row.Files.size()) << row.Name;
        EXPECT_EQ(data.Textures.size(), row.Textures) << row.Name;
        EXPECT_EQ(data.Clips.size(), row.Clips) << row.Name;
        EXPECT_EQ(data.Cameras.size(), row.Cameras) << row.Name;
        EXPECT_EQ(data.Lights.size(), row.Lights) << row.Name;
        ASSERT_EQ(data.Scenes.size(), 1U) << row.Name;
        EXPECT_EQ(data.Scenes[0].Meshes.size(), 0U) << row.Name;
        EXPECT_EQ(data.Scenes[0].Bones.size(), row.Bones) << row.Name;
        EXPECT_EQ(data.Scenes[0].Problem, "") << row.Name;
    }
}

TEST_F(CollectPreviewTest, EveryModelIsASceneAndTheRestIsToldOnce)
{
    fs::copy(Folder / "house.qmdl", Folder / "häuschen.qmdl");
    const PreviewData data = Collect({"house.qmdl", "häuschen.qmdl", "house.qskla", "Textures/Sky.qtex"});
    ASSERT_THAT(data.Scenes, SizeIs(2));
    EXPECT_EQ(data.Scenes[0].Meshes.size(), data.Scenes[1].Meshes.size());
    EXPECT_THAT(data.Scenes[1].Glb, StartsWith("glTF"));
    EXPECT_EQ(data.Files[1].Path, "häuschen.qmdl");
    EXPECT_THAT(data.Textures, SizeIs(1));
    EXPECT_THAT(data.Clips, SizeIs(1));
}

TEST_F(CollectPreviewTest, DamagedFilesAreToldInsteadOfShown)
{
    std::string text = tq4x::test::ReadWholeFile(Folder / "house.qmdl");
    text.resize(text.size() / 2);
    std::ofstream(Folder / "house.qmdl", std::ios::binary) << text;
    const PreviewData data = Collect({"house.qmdl", "Textures/Sky.qtex", "gone.qcam"});
    EXPECT_EQ(data.Scenes[0].Glb, "");
    EXPECT_EQ(data.Scenes[0].Problem, "The files have errors.");
    ASSERT_THAT(data.Findings, testing::Not(IsEmpty()));
    EXPECT_EQ(data.Findings[0].File, "house.qmdl");
    EXPECT_EQ(data.Findings.back().File, "gone.qcam");
    EXPECT_THAT(data.Textures, SizeIs(1));
}

TEST_F(CollectPreviewTest, FadingLightsTellHowFar)
{
    Replace("house.qlgt", "IsDistanceAttenuationEnabled=\"false\" DistanceAttenuationStart=\"0\"",
            "IsDistanceAttenuationEnabled=\"true\" DistanceAttenuationStart=\"0.25\"");
    EXPECT_EQ(Collect({"house.qlgt"}).Lights.at(1).Facts, "point, intensity 1.5, fades from 0.25 to 1");
}

TEST_F(CollectPreviewTest, BoxesStandInTheUnitsOfThePositions)
{
    const PreviewData before = Collect({"house.qmdl"});
    Replace("house.qmdl", "Magnify=\"2\"", "Magnify=\"4\"");
    const PreviewData after = Collect({"house.qmdl"});
    ASSERT_TRUE(before.Scenes[0].Meshes[0].Box && after.Scenes[0].Meshes[0].Box);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(after.Scenes[0].Meshes[0].Box->Size[i], 2 * before.Scenes[0].Meshes[0].Box->Size[i]);
        EXPECT_EQ(after.Scenes[0].Meshes[0].Box->CenterPosition[i],
                  2 * before.Scenes[0].Meshes[0].Box->CenterPosition[i]);
    }
}

} // namespace
} // namespace tq4x::preview
