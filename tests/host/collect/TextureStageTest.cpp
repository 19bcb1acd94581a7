#include "support/MaterialRun.h"
#include "support/TemporaryFolder.h"

#include <fstream>

namespace tq4x::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// File names of a stage by frame.
using FrameNames = std::vector<std::pair<float, std::string>>;

struct Timing
{
    double ClipIn = 1.0;
    double ClipOut = 10.0;
    double StartOffset = 1.0;
    double Scale = 1.0;
};

/// The pictures of a texture whose clip has this file name and pattern.
FrameNames CollectFrames(const std::string& fileName, const std::string& pattern, const Timing& timing,
                         double first, double last)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", fileName, "Set");
    const XSI::Texture texture(material.Shader().GetParameter(L"diffuse").GetSource());
    XSI::Host::SetSequence(texture.GetImageClip(), pattern, timing.ClipIn, timing.ClipOut, timing.StartOffset,
                           timing.Scale);
    MaterialRun run(first, last);
    run.Options.OutputQtex = false;
    EXPECT_TRUE(run.Convert({material}));
    for (const std::string& message : run.Messages()) // odd names are changed with a warning
        EXPECT_TRUE(message.starts_with("W Texture name is changed(")) << pattern << ": " << message;
    FrameNames names;
    for (const auto& [frame, collected] : run.Collector(material).Stages.at(0).Frames)
        names.emplace_back(frame, collected->FileName.GetAsciiString());
    return names;
}

TEST(TextureStage, ASingleImageStandsAtFrameNought)
{
    EXPECT_EQ(CollectFrames("a.png", "a.png", {0, 0}, 5, 9), (FrameNames{{0, "a.png"}}));
    EXPECT_EQ(CollectFrames("a.png", "a[1..3].png", {0, 0}, 0, 9), (FrameNames{{0, "a.png"}}));
}

TEST(TextureStage, AStageKnowsItsTextureAndSet)
{
    SceneBuilder scene;
    SceneMaterial material =
        scene.Material("m", "lambert").Image("diffuse", "a.png", "Set").NormalMap("b.png", "Other");
    MaterialRun run;
    EXPECT_TRUE(run.Convert({material}));
    const std::vector<TextureStage>& stages = run.Collector(material).Stages;
    ASSERT_EQ(stages.size(), 2u);
    EXPECT_EQ(stages[0].Name, "a.png");
    EXPECT_EQ(stages[0].TextureSpaceId, "Set");
    EXPECT_FALSE(stages[0].IsNormalMap);
    EXPECT_EQ(stages[1].TextureSpaceId, "Other");
    EXPECT_TRUE(stages[1].IsNormalMap);
}

TEST(TextureStage, PatternsAndTheirNumbers)
{
    const struct
    {
        const char* Pattern;
        std::vector<const char*> Files; ///< of the first three frames
    } rows[] = {
        {"a[1..3].tga", {"a1.tga", "a2.tga", "a3.tga"}},
        {"a[1..3;3].tga", {"a001.tga", "a002.tga", "a003.tga"}},
        {"a[1..3;1].tga", {"a1.tga", "a2.tga", "a3.tga"}},
        {"a[1..30;x;4].tga", {"a0001.tga", "a0002.tga", "a0003.tga"}},
        {"folder[x]/a[1..3].tga", {}}, // the first "]" stands before the last "["
        {"[old/a[1..3].tga", {"[old/a1.tga", "[old/a2.tga", "[old/a3.tga"}},
        {"a[1..3]b].tga", {"a1b].tga", "a2b].tga", "a3b].tga"}},
        {"a[2..3;2]", {"a02", "a03"}},
        {"[1..2]", {"1", "2"}},
        {"a[3..3].tga", {"a3.tga"}},
        {"a[1..3;0].tga", {"a1.tga", "a2.tga", "a3.tga"}},
        {"a[1..3;-4].tga", {"a1.tga", "a2.tga", "a3.tga"}},
        {"a[1..3;x].tga", {"a1.tga", "a2.tga", "a3.tga"}},
        {"a[1..3;].tga", {"a1.tga", "a2.tga", "a3.tga"}},
        {"a[-5..2;3].tga", {"a001.tga", "a002.tga"}},
        {"a[-5..-2;3].tga", {"a-02.tga"}},
        {"a1.tga", {}},
        {"a[1..3.tga", {}},
        {"a1..3].tga", {}},
        {"]a[", {}},
        {"a[].tga", {}},
        {"a[1].tga", {}},
        {"a[1.3].tga", {}},
        {"a[1..].tga", {}},
        {"a[..3].tga", {}},
        {"a[1..2..3].tga", {}},
        {"a[1...3].tga", {}},
        {"a[+1..3].tga", {}},
        {"a[ 1..3].tga", {}},
        {"a[1..3x].tga", {}},
        {"a[3..1].tga", {}},
        {"a[1..99999999999].tga", {}},
        {"", {}},
    };

    for (const auto& row : rows) {
        std::vector<std::string> files;
        for (const auto& [frame, file] : CollectFrames("a.tga", row.Pattern, {}, 0, 3))
            files.push_back(file);
        EXPECT_EQ(files, std::vector<std::string>(row.Files.begin(), row.Files.end())) << row.Pattern;
    }
}

TEST(TextureStage, AsManyDigitsAsAFileNameHolds)
{
    const FrameNames names = CollectFrames("a.tga", "a[7..8;60].tga", {}, 0, 1);
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(names[0].second, "a" + std::string(59, '0') + "7.tga");
    EXPECT_EQ(CollectFrames("a.tga", "[7..8;2000000000]", {}, 0, 1).at(0).second.size(), 255u);
}

TEST(TextureStage, SequencesRunOverTheWindow)
{
    const struct
    {
        const char* Name;
        Timing Time;
        double First;
        double Last;
        FrameNames Names;
    } rows[] = {
        {"the last frame adds nothing", {1, 10}, 0, 3, {{0, "a1"}, {1, "a2"}, {2, "a3"}}},
        {"from the middle", {1, 10}, 4, 6, {{4, "a5"}, {5, "a6"}}},
        {"one frame is none", {1, 10}, 3, 3, {}},
        {"before the start the number is the lowest", {1, 10, 4}, 0, 5, {{0, "a1"}, {4, "a2"}}},
        {"before nought", {1, 10}, -1, 2, {{-1, "a1"}, {1, "a2"}}},
        {"half speed repeats", {1, 10, 1, 0.5}, 0, 5, {{0, "a1"}, {2, "a2"}, {4, "a3"}}},
        {"double speed leaves out", {1, 10, 1, 2}, 0, 3, {{0, "a1"}, {1, "a3"}, {2, "a5"}}},
        {"one past clip out", {1, 3, 1, 1}, 0, 7, {{0, "a1"}, {1, "a2"}, {2, "a3"}, {3, "a4"}}},
        {"the highest number holds", {8, 20, 1, 1}, 0, 9, {{0, "a8"}, {1, "a9"}}},
        {"backwards", {4, 10, 1, -1}, 0, 4, {{0, "a4"}}},
        {"no speed", {4, 10, 1, 0}, 0, 4, {{0, "a4"}}},
        {"a window in fractions", {1, 10}, 0.9, 2.9, {{0, "a1"}, {1, "a2"}}},
    };

    for (const auto& row : rows)
        EXPECT_EQ(CollectFrames("a", "a[1..9]", row.Time, row.First, row.Last), row.Names) << row.Name;
}

TEST(TextureStage, TheNumberBeforeTheFirstIsMinusOne)
{
    EXPECT_EQ(CollectFrames("a", "a[-1..9]", {-1, 10, 1, 1}, 0, 3), (FrameNames{{1, "a0"}, {2, "a1"}}));
}

TEST(TextureStage, PicturesThatComeAgainShareTheirCollector)
{
    TemporaryFolder folder;
    const std::string script = (folder / "list.scr").string();
    std::ofstream(script) << "a\nb\na\n";
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", script, "Set");
    const XSI::Texture texture(material.Shader().GetParameter(L"diffuse").GetSource());
    XSI::Host::SetSequence(texture.GetImageClip(), "", 0, 2);
    MaterialRun run(0, 4);
    EXPECT_TRUE(run.Convert({material}));
    const auto& frames = run.Collector(material).Stages.at(0).Frames;
    ASSERT_EQ(frames.size(), 3u);
    EXPECT_EQ(frames.at(0.0f), frames.at(2.0f));
    EXPECT_NE(frames.at(0.0f), frames.at(1.0f));
    EXPECT_THAT(run.TextureNames(), ElementsAre("a", "b"));
    EXPECT_THAT(run.Of(material).TextureMappers.at(0).Patterns,
                ElementsAre(Pair(0, "a"), Pair(1, "b"), Pair(2, "a")));
}

FrameNames CollectScript(const std::string& text, const Timing& timing, double first, double last,
                         const char* name = "list.scr")
{
    TemporaryFolder folder;
    const std::string script = (folder / name).string();
    std::ofstream(script, std::ios::binary) << text;
    return CollectFrames(script, "", timing, first, last);
}

TEST(TextureStage, ScriptsNameTheirPictures)
{
    const struct
    {
        const char* Name;
        const char* Text;
        Timing Time;
        double Last;
        FrameNames Names;
    } rows[] = {
        {"one line for each frame", "a\nb\nc\n", {0, 2}, 3, {{0, "a"}, {1, "b"}, {2, "c"}}},
        {"the last line holds", "a\nb", {0, 9}, 5, {{0, "a"}, {1, "b"}}},
        {"carriage returns", "a\r\nb\r\n", {0, 2}, 2, {{0, "a"}, {1, "b"}}},
        {"blanks are kept", " a \nb\t\n", {0, 2}, 2, {{0, " a "}, {1, "b\t"}}},
        {"repeated lines", "a\na\nb\n", {0, 2}, 3, {{0, "a"}, {2, "b"}}},
        {"empty lines", "\na\n\na\nb\n", {0, 9}, 5, {{1, "a"}, {4, "b"}}},
        {"an empty line does not part equal ones", "a\n\na\n", {0, 9}, 3, {{0, "a"}}},
        {"lines count from nought", "a\nb\nc\n", {1, 9}, 2, {{0, "b"}, {1, "c"}}},
        {"before the start", "a\nb\n", {0, 9, 3}, 4, {{0, "a"}, {3, "b"}}},
        {"below nought", "a\nb\n", {-5, 9}, 7, {{0, "a"}, {6, "b"}}},
        {"clip in and out nought are no matter", "a\nb\n", {0, 0}, 2, {{0, "a"}, {1, "b"}}},
        {"an empty file", "", {0, 2}, 3, {}},
        {"one frame", "a\n", {0, 2}, 0, {}},
    };

    for (const auto& row : rows)
        EXPECT_EQ(CollectScript(row.Text, row.Time, 0, row.Last), row.Names) << row.Name;
    EXPECT_EQ(CollectScript("a\n", {0, 2}, 0, 1, "LIST.SCR"), (FrameNames{{0, "a"}}));
}

TEST(TextureStage, AScriptThatCanNotBeReadHasNoFrames)
{
    EXPECT_THAT(CollectFrames("absent/list.scr", "", {0, 9}, 0, 9), IsEmpty());
}

TEST(TextureStage, WithoutAFileNameTheStageStaysEmpty)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "", "Set");
    MaterialRun run(0, 3);
    EXPECT_TRUE(run.Convert({material}));
    ASSERT_EQ(run.Collector(material).Stages.size(), 1u);
    EXPECT_THAT(run.Collector(material).Stages[0].Frames, IsEmpty());
    EXPECT_THAT(run.Of(material).TextureCoordinators, IsEmpty());
    EXPECT_THAT(run.Of(material).TextureMappers, IsEmpty());
    EXPECT_THAT(run.Messages(), ElementsAre("E Texture image name is wrong"));
}

TEST(TextureStage, PicturesAreThoseOfTheirFrames)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "a1.png", "Set");
    const XSI::Texture texture(material.Shader().GetParameter(L"diffuse").GetSource());
    XSI::Host::SetSequence(texture.GetImageClip(), "a[1..9].png", 1, 9);
    XSI::Host::SetPixelSource(texture.GetImageClip(), [](double frame) {
        return MakePicture(8, 8, 4, 1, static_cast<int>(frame) + 10);
    });
    MaterialRun run(3, 6);
    EXPECT_TRUE(run.Convert({material}));
    std::vector<int> values;
    for (const auto& [frame, collected] : run.Collector(material).Stages.at(0).Frames)
        values.push_back(collected->Image.Pixels.at(0));
    EXPECT_THAT(values, ElementsAre(13, 14, 15));
}

// The first picture goes to key 0, the others to their own frames.
TEST(TextureStage, PatternsKeepTheFramesOfTheHost)
{
    const struct
    {
        double First;
        double Last;
        std::map<std::int32_t, std::string> Patterns;
    } rows[] = {
        {0, 3, {{0, "a1"}, {1, "a2"}, {2, "a3"}}},
        {4, 7, {{0, "a5"}, {5, "a6"}, {6, "a7"}}},
        {-1, 2, {{0, "a1"}, {1, "a2"}}},
    };

    for (const auto& row : rows) {
        SceneBuilder scene;
        SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "a.png", "Set");
        const XSI::Texture texture(material.Shader().GetParameter(L"diffuse").GetSource());
        XSI::Host::SetSequence(texture.GetImageClip(), "a[1..9].png", 1, 9);
        MaterialRun run(row.First, row.Last);
        EXPECT_TRUE(run.Convert({material}));
        EXPECT_EQ(run.Of(material).TextureMappers.at(0).Patterns, row.Patterns) << row.First;
    }
}

TEST(TextureStage, ALaterPictureAtKeyNoughtReplacesTheFirst)
{
    SceneBuilder scene;
    SceneMaterial material = scene.Material("m", "lambert").Image("diffuse", "a.png", "Set");
    const XSI::Texture texture(material.Shader().GetParameter(L"diffuse").GetSource());
    XSI::Host::SetSequence(texture.GetImageClip(), "a[1..9].png", 2, 9, 0);
    MaterialRun run(-1, 2);
    EXPECT_TRUE(run.Convert({material}));
    EXPECT_THAT(run.Of(material).TextureMappers.at(0).Patterns, ElementsAre(Pair(0, "a3"), Pair(1, "a4")));
    EXPECT_THAT(run.TextureNames(), ElementsAre("a2", "a3", "a4"));
}

} // namespace
} // namespace tq4x::test
