#include <gtest/gtest.h>

#include "Program.h"
#include "cli/ExportReport.h"
#include "cli/ExportRequest.h"
#include "cli/WrittenFiles.h"
#include "pipeline/ExportOptions.h"
#include "pipeline/OptionTable.h"
#include "pipeline/OptionText.h"
#include "pipeline/SettingsFile.h"

namespace tq4x::cli::test
{
namespace
{

ParsedRequest Parse(const std::vector<std::string>& words, bool hasTool = false)
{
    const ParsedArguments parsed = ParseArguments(words, ExportOptionSpecs());
    EXPECT_EQ(parsed.Error, "");
    return ReadExportRequest(parsed.Content, hasTool);
}

using Texts = std::vector<std::string>;

TEST(ExportRequestTest, DefaultsComeFromTheScene)
{
    const ExportRequest request = Parse({"dir/My Scene.glb"}).Content;
    EXPECT_EQ(request.Scene, "dir/My Scene.glb");
    EXPECT_EQ(request.Name, "My Scene");
    EXPECT_EQ(request.Folder, ".");
    EXPECT_EQ(request.KeyValues, (Texts{"OptimizePrimitive:false"}));
    EXPECT_EQ(request.Opening.FramesPerSecond, 30.0);
    EXPECT_FALSE(request.Opening.Clip || request.SettingsFile || request.ReportFile ||
                 request.DependencyFile);
    EXPECT_FALSE(request.Opening.FitTextures);
}

TEST(ExportRequestTest, WithAToolThePluginsDefaultsHold)
{
    EXPECT_EQ(Parse({"a.glb"}, true).Content.KeyValues, Texts{});
}

TEST(ExportRequestTest, OptionsBecomeTexts)
{
    const ExportRequest request = Parse({"a.glb",
                                         "-o",
                                         "out",
                                         "-n",
                                         "base",
                                         "--frames",
                                         "3-12",
                                         "--overwrite",
                                         "--select",
                                         "x",
                                         "--select",
                                         "y",
                                         "--set",
                                         "Magnify:2.5",
                                         "--set",
                                         "OptimizePrimitive:true",
                                         "--clip",
                                         "walk",
                                         "--fps",
                                         "24",
                                         "--fit-textures",
                                         "--asset-root",
                                         "/r",
                                         "--report",
                                         "r.json",
                                         "--depfile",
                                         "d"})
                                      .Content;
    EXPECT_EQ(request.Name, "base");
    EXPECT_EQ(request.Folder, "out");
    EXPECT_EQ(request.KeyValues,
              (Texts{"OptimizePrimitive:false", "SelectAnimationFrame:Range", "AnimationStartFrame:3",
                     "AnimationEndFrame:12", "AlwaysOverwrite:true", "ExportTarget:Selection", "Magnify:2.5",
                     "OptimizePrimitive:true"}));
    EXPECT_EQ(request.Selected, (Texts{"x", "y"}));
    EXPECT_EQ(request.Opening.Clip, "walk");
    EXPECT_EQ(request.Opening.FramesPerSecond, 24.0);
    EXPECT_TRUE(request.Opening.FitTextures);
    EXPECT_EQ(request.Opening.AssetRoot, "/r");
    EXPECT_EQ(request.ReportFile, "r.json");
    EXPECT_EQ(request.DependencyFile, "d");
}

TEST(ExportRequestTest, FrameWords)
{
    const struct
    {
        const char* Frames;
        Texts Expected;
    } cases[] = {
        {"all", {"SelectAnimationFrame:All"}},
        {"playback", {"SelectAnimationFrame:Playback"}},
        {"1-1", {"SelectAnimationFrame:Range", "AnimationStartFrame:1", "AnimationEndFrame:1"}},
        {"-5--1", {"SelectAnimationFrame:Range", "AnimationStartFrame:-5", "AnimationEndFrame:-1"}},
        {"10-5", {"SelectAnimationFrame:Range", "AnimationStartFrame:10", "AnimationEndFrame:5"}},
    };

    for (const auto& entry : cases) {
        EXPECT_EQ(Parse({"a.glb", std::string("--frames=") + entry.Frames}, true).Content.KeyValues,
                  entry.Expected);
    }
}

TEST(ExportRequestTest, RefusesValuesThatMakeNoSense)
{
    const struct
    {
        const char* Word;
        const char* Error;
    } cases[] = {
        {"--frames=1", "The frames must be all, playback or FIRST-LAST, not \"1\"."},
        {"--frames=", "The frames must be all, playback or FIRST-LAST, not \"\"."},
        {"--frames=a-b", "The frames must be all, playback or FIRST-LAST, not \"a-b\"."},
        {"--frames=1-2x", "The frames must be all, playback or FIRST-LAST, not \"1-2x\"."},
        {"--frames=1-99999999999", "The frames must be all, playback or FIRST-LAST, not \"1-99999999999\"."},
        {"--fps=0", "The frame rate must be a number above 0, not \"0\"."},
        {"--fps=-1", "The frame rate must be a number above 0, not \"-1\"."},
        {"--fps=nan", "The frame rate must be a number above 0, not \"nan\"."},
        {"--fps=30fps", "The frame rate must be a number above 0, not \"30fps\"."},
    };

    for (const auto& entry : cases) {
        EXPECT_EQ(Parse({"a.glb", entry.Word}).UsageError, entry.Error);
    }
}

TEST(ExportRequestTest, RefusesTextsThatThePluginPassesOver)
{
    for (const char* const text :
         {"Magnifi:2", "Magnify:two", "OutputQskla:yes", "PositionQzType:Word", "Magnify"}) {
        const std::string error = Parse({"a.glb", "--set", text}).UsageError;
        EXPECT_NE(error, "") << text;
    }
    EXPECT_NE(Parse({"a.glb", "--set", "Magnifi:2"}).UsageError.find("Magnify"), std::string::npos);
}

class SettingsTest : public ProgramTest
{
protected:
    SettingsTest()
    {
        m_options.OutputFileName = "fromfile";
        m_options.OutputFolder = "folder";
        m_options.Magnify = 4.0f;
        m_options.OutputQskla = true;
        m_options.ConvertToModel = true;
        m_options.CompressNode = 2;
        m_options.FrameRange = 1;
        m_options.QuantizeNrm = 3;
        m_options.UseBrellStudio = true;
        Write("a.q3es", SettingsText(m_options));
    }

    ExportOptions m_options;
};

TEST_F(SettingsTest, ThePluginReadsThemAlone)
{
    const ExportRequest request = Parse({"a.glb", "-s", Path("a.q3es")}).Content;
    EXPECT_EQ(request.SettingsFile, Path("a.q3es"));
    EXPECT_EQ(request.Name, "fromfile");
    EXPECT_EQ(request.Folder, "folder");
    EXPECT_EQ(request.Inputs, (std::vector<std::filesystem::path>{Path("a.q3es")}));
    const ExportRequest named = Parse({"a.glb", "-s", Path("a.q3es"), "-n", "x", "-o", "y"}).Content;
    EXPECT_EQ(named.Name, "x");
    EXPECT_EQ(named.Folder, "y");
}

TEST_F(SettingsTest, OtherOptionsGoOnTop)
{
    const ExportRequest request =
        Parse({"a.glb", "-s", Path("a.q3es"), "--set", "Magnify:8", "--frames", "all"}).Content;
    EXPECT_FALSE(request.SettingsFile);
    ExportOptions read;
    read.LoadFromArguments({request.Name, request.Folder, request.KeyValues});
    ExportOptions expected = m_options;
    expected.Magnify = 8.0f;
    expected.FrameRange = 0;
    EXPECT_EQ(read, expected);
}

TEST_F(SettingsTest, FilesThatAreNoSettingsAreRefused)
{
    Write("b.q3es", "hello");
    EXPECT_EQ(Parse({"a.glb", "-s", Path("b.q3es")}).InputError,
              "The file " + Path("b.q3es") + " is no settings file.");
    EXPECT_EQ(Parse({"a.glb", "-s", Path("none.q3es")}).InputError,
              "The file " + Path("none.q3es") + " does not exist.");
}

TEST_F(SettingsTest, FilesAreAsLargeAsThePluginTakesThem)
{
    const std::string text = "# TQ4X_ForPennonExport settings\nOptimizePrimitive=\"true\"\n#";
    Write("large.q3es", text + std::string(MaxSettingsSize - text.size(), '-'));
    EXPECT_EQ(Parse({"a.glb", "-s", Path("large.q3es")}).InputError, "");
    std::filesystem::resize_file(Folder / "large.q3es", MaxSettingsSize + 1);
    const std::string error = "The file " + Path("large.q3es") + " is larger than 16777216 bytes.";
    EXPECT_EQ(Parse({"a.glb", "-s", Path("large.q3es")}).InputError, error);
    for (const auto& words : std::vector<Texts>{{"settings", Path("large.q3es")},
                                                {"export", "a.glb", "-s", Path("large.q3es")}}) {
        const Outcome outcome = RunInside(words);
        EXPECT_EQ(outcome.Code, BadInput) << words[0];
        EXPECT_EQ(outcome.Err, "error: " + error + "\n") << words[0];
    }
}

TEST_F(SettingsTest, FilesThatAreSilentAboutTheToolDoNotAskForIt)
{
    Write("silent.q3es", "# TQ4X_ForPennonExport settings\nMagnify=\"3\"\n");
    const ExportRequest without = Parse({"a.glb", "-s", Path("silent.q3es")}).Content;
    EXPECT_FALSE(without.SettingsFile);
    ExportOptions read;
    read.LoadFromArguments({"", "", without.KeyValues});
    EXPECT_FALSE(read.OptimizePrimitive);
    EXPECT_EQ(read.Magnify, 3.0f);

    const ExportRequest with = Parse({"a.glb", "-s", Path("silent.q3es")}, true).Content;
    EXPECT_EQ(with.SettingsFile, Path("silent.q3es"));
    const ExportRequest wanted =
        Parse({"a.glb", "-s", Path("silent.q3es"), "--set", "OptimizePrimitive:true"}).Content;
    read.LoadFromArguments({"", "", wanted.KeyValues});
    EXPECT_TRUE(read.OptimizePrimitive);
}

TEST_F(SettingsTest, AnEmptyNameFallsBackToTheScene)
{
    m_options.OutputFileName.clear();
    m_options.OutputFolder.clear();
    Write("a.q3es", SettingsText(m_options));
    const ExportRequest request = Parse({"dir/tree.glb", "-s", Path("a.q3es")}).Content;
    EXPECT_EQ(request.Name, "tree");
    EXPECT_EQ(request.Folder, ".");
}

TEST_F(SettingsTest, FoldersGetTheSeparatorsOfTheSystem)
{
    m_options.OutputFolder = "from\\file";
    Write("a.q3es", SettingsText(m_options));
    EXPECT_EQ(Parse({"a.glb", "-s", Path("a.q3es")}).Content.Folder, "from/file");
    EXPECT_EQ(Parse({"a.glb", "-s", Path("a.q3es"), "-o", "a\\b/c"}).Content.Folder, "a/b/c");
}

class WrittenFilesTest : public ProgramTest
{};

TEST_F(WrittenFilesTest, NamesWhatCameOrChanged)
{
    std::filesystem::create_directories(Folder / "out/Textures");
    Write("out/old.qmdl", "1");
    Write("out/changed.qmdl", "1");
    const WrittenFiles written(Folder / "out");
    Write("out/changed.qmdl", "22");
    Write("out/a.qskla", "333");
    Write("out/note.txt", "x");
    Write("out/Textures/t.qtex", "4444");
    std::vector<std::string> names;
    for (const WrittenFiles::File& file : written.Collect()) {
        names.push_back(file.Path.filename().string() + " " + std::to_string(file.Size));
    }
    EXPECT_EQ(names, (Texts{"changed.qmdl 2", "a.qskla 3", "t.qtex 4"}));
    EXPECT_TRUE(WrittenFiles(Folder / "none").Collect().empty());
}

TEST(ReportTest, EscapesWhatBuildToolsWouldTakeApart)
{
    EXPECT_EQ(FormatDependencies({{"o ut/a.qmdl", 1}, {"b$.qskla", 1}}, {"in/x y.glb", "#c:d"}),
              "o\\ ut/a.qmdl b$$.qskla: \\\n  in/x\\ y.glb \\\n  \\#c\\:d\n");
}

TEST(ReportTest, HoldsEverythingAndNoTime)
{
    ExportRequest request;
    request.Scene = "a.glb";
    request.Name = "a";
    request.Folder = "out";
    request.KeyValues = {"Magnify:2"};
    EXPECT_EQ(FormatReport(request, 1, {{"out/a.qmdl", 12}}, {{Severity::Warning, "Body", "odd", 2}}),
              R"({
  "program": "tq4x 0.5.3",
  "scene": "a.glb",
  "settings": {
    "name": "a",
    "folder": "out",
    "arguments": [
      "Magnify:2"
    ]
  },
  "exitCode": 1,
  "files": [
    {
      "path": "out/a.qmdl",
      "size": 12
    }
  ],
  "messages": [
    {
      "severity": "warning",
      "object": "Body",
      "text": "odd",
      "count": 2
    }
  ]
}
)");
}

} // namespace
} // namespace tq4x::cli::test
