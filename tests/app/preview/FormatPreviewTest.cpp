#include "preview/FormatPreview.h"

#include <gmock/gmock.h>

#include "Base64Text.h"
#include "gltf/JsonValue.h"
#include "preview/EmbeddedPage.h"
#include "support/Golden.h"

namespace tq4x::preview
{
namespace
{

using testing::HasSubstr;
using testing::Not;

const char* const Hostile = "</script><img src=x onerror=alert(1)><!--\"'&amp;\\u003c\n";

PreviewData SmallData()
{
    PreviewData data;
    data.Program = "tq4x 1.0";
    data.Name = "house";
    data.Scene = "art/house.glb";
    data.Folder = "out";
    data.Author = "ann";
    data.Date = "2026-01-02T03:04:05";
    data.Files = {{"house.qmdl", "model", 1234}, {"Textures/sky.qtex", "texture", 56}};
    data.Messages = {{cli::Severity::Warning, "door", "It is ajar.", 2}};
    data.Findings = {{"TQ-BOX", reader::Severity::Error, "house.qmdl", 12, "The bounding box is none."}};
    PreviewScene scene;
    PreviewMesh mesh = {"door", "wood", true, 24, 12, 1, "None", {{"Position", "Short", 3, false}}, {}};
    mesh.Box = reader::OrientedBoundingBox{{0.1F, 2, 0}, {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}, {1, 4, 0.2F}};
    scene.Meshes = {mesh};
    scene.Materials = {{"wood", {0.8F, 0.4F, 0, 1}, {"sky"}, "BackFace", "NotUsed", false, true, 1}};
    scene.Bones = {"root", "door"};
    scene.Glb = "glTF";
    scene.Notes = {"\"lamp\": the mesh is invisible and left out."};
    data.Scenes = {scene};
    data.Textures = {{"sky", "Textures/sky.qtex", 8, 4, false, "Rgb565", 1, 64, "PNG"}};
    data.Clips = {{"house", "bones", "house.qskla", 120, true, 3}};
    data.Cameras = {{"view", "house.qcam", "perspective, 45° high, from 0.1 to 100"}};
    data.Lights = {{"sun", "house.qlgt", "directional, intensity 1"}};
    return data;
}

/// Data in which every text is the same.
PreviewData DataOf(const std::string& text)
{
    PreviewData data = SmallData();
    for (std::string* const field :
         {&data.Program, &data.Name, &data.Scene, &data.Folder, &data.Author, &data.Date}) {
        *field = text;
    }
    data.Files[0].Path = data.Files[0].Kind = text;
    data.Messages[0].Object = data.Messages[0].Text = text;
    data.Findings[0] = {text, reader::Severity::Error, text, 1, text};
    PreviewScene& scene = data.Scenes[0];
    scene.Problem = text;
    scene.Notes = scene.Bones = {text};
    scene.Meshes[0].Node = scene.Meshes[0].Material = scene.Meshes[0].Skinning = text;
    scene.Meshes[0].Streams[0].Usage = scene.Meshes[0].Streams[0].Mode = text;
    scene.Materials[0].Name = scene.Materials[0].Culling = scene.Materials[0].Blend = text;
    scene.Materials[0].Textures = {text};
    data.Textures[0].Name = data.Textures[0].File = data.Textures[0].Format = text;
    data.Clips[0].Name = data.Clips[0].Kind = data.Clips[0].File = text;
    data.Cameras[0] = data.Lights[0] = {text, text, text};
    return data;
}

TEST(FormatPreview, JsonOfASmallExport)
{
    tq4x::test::ExpectGolden(FormatPreviewJson(SmallData()) + "\n", "app/preview/small.json");
}

TEST(FormatPreview, JsonOfNothing)
{
    const gltf::JsonValue json = gltf::ParseJson(FormatPreviewJson({}));
    for (const char* const list :
         {"files", "messages", "findings", "scenes", "textures", "clips", "cameras", "lights"}) {
        ASSERT_NE(json.Find(list), nullptr) << list;
        EXPECT_TRUE(json.Find(list)->Array() != nullptr && json.Find(list)->Array()->empty()) << list;
    }
}

TEST(FormatPreview, TextsComeThroughUnharmedAndHarmless)
{
    for (const std::string text : {Hostile, "@DATA@ @MODELS@ @TITLE@", "Grüße, 世界", "\t\x01\x7f", ""}) {
        const std::string json = FormatPreviewJson(DataOf(text));
        EXPECT_EQ(json.find('<'), std::string::npos) << text;
        const gltf::JsonValue parsed = gltf::ParseJson(json);
        EXPECT_EQ(*parsed.Find("name")->String(), text);
        const gltf::JsonValue& mesh = parsed.Find("scenes")->Array()->at(0).Find("meshes")->Array()->at(0);
        EXPECT_EQ(*mesh.Find("node")->String(), text);
    }
}

TEST(FormatPreview, FillsTheGapsOfAPageOnce)
{
    PreviewData data = DataOf("@MODELS@@DATA@@TITLE@");
    data.Name = "a<b>&c";
    data.Program = "p";
    const std::string page = FillPreviewPage("<t>@TITLE@</t><d>@DATA@</d>@MODELS@|@DATA@", data);
    EXPECT_EQ(page, "<t>a&lt;b>&amp;c – p</t><d>" + FormatPreviewJson(data) +
                        "</d><script type=\"text/plain\" id=\"scene-0\">" + reader::EncodeBase64("glTF") +
                        "</script>\n|@DATA@");
}

TEST(FormatPreview, ScenesWithoutAViewHaveNoElement)
{
    PreviewData data = SmallData();
    data.Scenes.insert(data.Scenes.begin(), PreviewScene());
    const std::string page = FillPreviewPage("@TITLE@@DATA@@MODELS@", data);
    EXPECT_THAT(page, Not(HasSubstr("id=\"scene-0\"")));
    EXPECT_THAT(page, HasSubstr("id=\"scene-1\""));
    EXPECT_THAT(page, HasSubstr("\"glb\": \"\""));
    EXPECT_THAT(page, HasSubstr("\"glb\": \"scene-1\""));
}

TEST(EmbeddedPage, IsOneFileWithGapsThatAsksNobody)
{
    for (const reader::EmbeddedFile& file : EmbeddedPage()) {
        std::size_t last = 0;
        for (const char* const gap : {"@TITLE@", "@DATA@", "@MODELS@"}) {
            const std::size_t at = file.Text.find(gap);
            ASSERT_NE(at, std::string_view::npos) << gap;
            EXPECT_GT(at, last) << gap;
            last = at;
        }
        for (const char* const gap : {"@STYLE@", "@SCRIPT@", "@SCRIPT_HASH@"}) {
            EXPECT_EQ(file.Text.find(gap), std::string_view::npos) << gap;
        }
        EXPECT_NE(file.Text.find("default-src 'none'"), std::string_view::npos);
        EXPECT_NE(file.Text.find("three.js authors"), std::string_view::npos) << "the licence's notice";
        EXPECT_EQ(file.Text.find("https://"), std::string_view::npos);
    }
}

} // namespace
} // namespace tq4x::preview
