#include "pipeline/ToolHandOff.h"
#include "pipeline/PathText.h"

#include "support/Golden.h"
#include "support/MessageRecorder.h"
#include "support/PlatformGuard.h"
#include "support/TemporaryFolder.h"

#include <fstream>

namespace tq4x
{
namespace
{

namespace fs = std::filesystem;
using test::MessageRecorder;
using test::ReadWholeFile;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* Base = "C:\\out\\house";

TEST(OptimizeJob, Defaults)
{
    const OptimizeJob job;
    EXPECT_FALSE(job.OptimizeModel || job.OptimizeAnimation || job.CompressMaterial || job.ConvertToModel ||
                 job.Merge);
    EXPECT_TRUE(job.OptimizePrimitive);
    EXPECT_EQ(job.NodeMode, 0);
    EXPECT_EQ(job.WorkName, "TQ4X_Optimize_");
    EXPECT_EQ(job.MergePath, "");
    EXPECT_EQ(job.QuantizePos + job.QuantizeNrm + job.QuantizeTex, 0);
}

TEST(OptimizeJob, ComesFromTheOptions)
{
    test::PlatformGuard guard;
    guard.SetEnvironment({{"TEMP", "C:\\temp"}});
    ExportOptions options;
    options.OutputQmdl = options.OptimizePrimitive = false;
    options.OutputQskla = options.CompressMaterial = options.MergeQmdl = true;
    options.MergeQmdlPath = "D:\\old\\house.qmdl";
    options.CompressNode = 2;
    options.QuantizePos = 1;
    options.QuantizeNrm = 3;
    const OptimizeJob job = MakeOptimizeJob(options);
    EXPECT_FALSE(job.OptimizeModel);
    EXPECT_TRUE(job.OptimizeAnimation);
    EXPECT_EQ(job.NodeMode, 2);
    EXPECT_FALSE(job.OptimizePrimitive);
    EXPECT_TRUE(job.CompressMaterial);
    EXPECT_FALSE(job.ConvertToModel);
    EXPECT_TRUE(job.Merge);
    EXPECT_EQ(job.WorkName, "TQ4X_Softimage_Optimize_");
    EXPECT_EQ(job.MergePath, "C:\\temp\\TQ4X_Softimage_Optimize_house.qmdl");
    EXPECT_EQ(job.QuantizePos, 1);
    EXPECT_EQ(job.QuantizeNrm, 3);
    EXPECT_EQ(job.QuantizeTex, 0);
}

TEST(OptimizeJob, ConvertingToAModelUnitesAllNodes)
{
    for (const std::uint32_t compressNode : {0u, 2u, 4u, 9u}) {
        ExportOptions options;
        options.ConvertToModel = true;
        options.OutputQskla = true;
        options.CompressNode = compressNode;
        EXPECT_EQ(MakeOptimizeJob(options).NodeMode, 4);
        EXPECT_FALSE(TakesAnimation(MakeOptimizeJob(options)));
    }
}

TEST(OptimizeJob, OnlyCullingUninfluentialNodesTakesTheAnimation)
{
    for (std::int32_t mode = 0; mode < 6; ++mode) {
        OptimizeJob job;
        job.NodeMode = mode;
        EXPECT_FALSE(TakesAnimation(job)) << mode;
        job.OptimizeAnimation = true;
        EXPECT_EQ(TakesAnimation(job), mode == 2) << mode;
    }
}

OptimizeJob NothingAsked()
{
    OptimizeJob job;
    job.OptimizeModel = true;
    job.OptimizePrimitive = false;
    return job;
}

TEST(ToolScripts, OptimizeAndMerge)
{
    OptimizeJob job;
    job.OptimizeModel = job.OptimizeAnimation = job.CompressMaterial = job.Merge = true;
    job.NodeMode = 2;
    job.MergePath = "C:\\temp\\TQ4X_Softimage_Optimize_old.qmdl";
    job.QuantizePos = 1;
    job.QuantizeNrm = 3;
    test::ExpectGolden(OptimizeScript(job, Base, "house"), "core/pipeline/optimize-and-merge.py");
}

TEST(ToolScripts, MergeOnly)
{
    OptimizeJob job = NothingAsked();
    job.Merge = true;
    job.MergePath = "/tmp/old.qmdl";
    test::ExpectGolden(OptimizeScript(job, "/out/house", "house"), "core/pipeline/merge-only.py");
}

TEST(ToolScripts, NothingAsked)
{
    EXPECT_EQ(OptimizeScript(NothingAsked(), Base, "house"), "");
}

TEST(ToolScripts, WithoutAModelTheCallIsMadeAllTheSame)
{
    OptimizeJob job;
    EXPECT_EQ(OptimizeScript(job, Base, "house"),
              "BrellStudio.Execute(\"OptimizeSelectedModel\", \"-opp\", \"-positionqm=Float\", "
              "\"-normalqm=Float\", "
              "\"-textureqm=Float\")\nBrellStudio.Execute(\"SaveDocuments\", \"-idd\")\n"
              "BrellStudio.Execute(\"File\" ,\"\")\n\n");
}

TEST(ToolScripts, OptionsOfTheCall)
{
    const struct
    {
        const char* Name;
        void (*Change)(OptimizeJob&);
        const char* Options;
    } cases[] = {
        {"mode 1", [](OptimizeJob& job) { job.NodeMode = 1; }, "\"-mode=CullLeafBone\", \"-cmesh\", "},
        {"mode 2", [](OptimizeJob& job) { job.NodeMode = 2; },
         "\"-mode=CullUninfluentialBone\", \"-cmesh\", "},
        {"mode 3", [](OptimizeJob& job) { job.NodeMode = 3; },
         "\"-mode=UniteCompressibleBone\", \"-cmesh\", "},
        {"mode 4", [](OptimizeJob& job) { job.NodeMode = 4; }, "\"-mode=UniteAllBone\", \"-cmesh\", "},
        {"mode without a word", [](OptimizeJob& job) { job.NodeMode = 5; }, ""},
        {"negative mode", [](OptimizeJob& job) { job.NodeMode = -1; }, ""},
        {"primitives", [](OptimizeJob& job) { job.OptimizePrimitive = true; }, "\"-opp\", "},
        {"materials", [](OptimizeJob& job) { job.CompressMaterial = true; }, "\"-cmat\", "},
        {"model", [](OptimizeJob& job) { job.ConvertToModel = true; }, "\"-cobsm\", "},
    };

    for (const auto& row : cases) {
        OptimizeJob job = NothingAsked();
        row.Change(job);
        EXPECT_THAT(OptimizeScript(job, Base, "house"),
                    HasSubstr(std::string("BrellStudio.Execute(\"OptimizeSelectedModel\", ") + row.Options +
                              "\"-positionqm=Float\", \"-normalqm=Float\", \"-textureqm=Float\")\n"))
            << row.Name;
    }
}

TEST(ToolScripts, QuantizeWords)
{
    const char* const words[] = {"Float", "Short", "Float", "Byte", "Float", "Auto", "Float"};
    for (std::int32_t mode = 0; mode < 7; ++mode) {
        OptimizeJob job;
        job.QuantizePos = job.QuantizeNrm = job.QuantizeTex = mode;
        const std::string word = words[mode];
        EXPECT_THAT(OptimizeScript(job, Base, "house"),
                    HasSubstr("\"-positionqm=" + word + "\", \"-normalqm=" + word +
                              "\", \"-textureqm=" + word + "\")"));
    }
}

TEST(ToolScripts, Viewer)
{
    test::ExpectGolden(ViewerScript({{"C:\\out\\house.qmdl", "house"},
                                     {"C:\\out\\house.qskla", "house"},
                                     {"C:\\out\\Textures\\wall.qtex", "wall"}}),
                       "core/pipeline/viewer.py");
    EXPECT_EQ(ViewerScript({}), "");
}

TEST(ToolScripts, TextsAreUtf8WithForwardSlashes)
{
    const test::PlatformGuard guard;
    SetSystemCodePage(CodePageShiftJis);
    EXPECT_EQ(ScriptPath("C:\\\x95\x5C\\t"), "C:/\xE8\xA1\xA8/t");
    OptimizeJob job;
    job.OptimizeModel = true;
    const std::string script = OptimizeScript(job, "C:\\\x95\x5C", "\x95\x5C");
    EXPECT_THAT(script, HasSubstr("\"C:/\xE8\xA1\xA8.qmdl\""));
    EXPECT_THAT(script, HasSubstr("\"-cs=\xE8\xA1\xA8\""));
    EXPECT_THAT(script, Not(HasSubstr("\\")));
}

TEST(ToolScripts, WhatMayStandBetweenQuotes)
{
    EXPECT_TRUE(IsScriptSafe("C:/a b'(1)&;%!/\xE8\xA1\xA8"));
    EXPECT_TRUE(IsScriptSafe(""));
    for (const char* text : {"a\"b", "a`b", "a$b", "a\nb", "a\rb", "a\tb", "a\x7F", "\x01"})
        EXPECT_FALSE(IsScriptSafe(text)) << text;
    EXPECT_FALSE(IsScriptSafe(std::string("a\0b", 3)));
}

/// A tool installation whose starter only has to exist: commands are recorded, not run.
class HandOff : public testing::Test
{
protected:
    HandOff()
    {
        UseRoot(Path("root"));
        Install(m_folder / "root");
        CurrentPlatform().RunCommand = [this](const std::string& command) {
            Commands.push_back(command);
            return ExitCode;
        };
        Options.OutputFileName = "house";
        Options.OutputFolder = "/out";
    }

    void UseRoot(const std::string& root)
    {
        m_guard.SetEnvironment({{"TQ4X_FORPENNON_ROOT", root}, {"TEMP", "/temp"}});
    }

    static void Install(const fs::path& root)
    {
        fs::create_directories(root / "tools/BrellStudioStarter");
        std::ofstream(root / "tools/BrellStudioStarter/BrellStudioStarter.exe") << "";
    }

    std::string Path(const std::string& name) const { return (m_folder / name).string(); }

    std::string Starter() const { return Path("root/tools/BrellStudioStarter/BrellStudioStarter.exe"); }

    std::string OptimizeScriptPath() const
    {
        return Path("root/tools/BrellStudio/DccTemporaryDaemon/Startup.py");
    }

    std::string ViewerScriptPath() const { return Path("root/tools/BrellStudio/DccTemporary/Startup.py"); }

    void ExpectNothingHappened() const
    {
        EXPECT_THAT(Commands, IsEmpty());
        EXPECT_FALSE(fs::exists(Path("root/tools/BrellStudio")));
    }

    ExportOptions Options;
    std::vector<std::string> Commands;
    int ExitCode = 0;

private:
    TemporaryFolder m_folder;
    test::PlatformGuard m_guard;
    MessageRecorder m_recorder;
};

TEST_F(HandOff, OptimizationWritesTheScriptAndStartsTheTool)
{
    EXPECT_TRUE(RunOptimization(Options));
    EXPECT_EQ(ReadWholeFile(OptimizeScriptPath()),
              OptimizeScript(MakeOptimizeJob(Options), "/out/house", "house"));
    EXPECT_THAT(Commands, ElementsAre("\"" + Starter() + "\" -daemon"));
    EXPECT_THAT(MessageRecorder::Messages(), IsEmpty());
}

TEST_F(HandOff, EachRunOverwritesTheScript)
{
    EXPECT_TRUE(RunOptimization(Options));
    Options.OutputFileName = "other";
    EXPECT_TRUE(RunOptimization(Options));
    EXPECT_THAT(ReadWholeFile(OptimizeScriptPath()), Not(HasSubstr("house")));
}

TEST_F(HandOff, NothingAskedNothingHappens)
{
    Options.OptimizePrimitive = false;
    EXPECT_TRUE(RunOptimization(Options));
    ExpectNothingHappened();
    EXPECT_THAT(MessageRecorder::Messages(), IsEmpty());
}

TEST_F(HandOff, MergingAloneStartsTheTool)
{
    Options.OptimizePrimitive = false;
    Options.MergeQmdl = true;
    Options.MergeQmdlPath = "/old/o.qmdl";
    EXPECT_TRUE(RunOptimization(Options));
    EXPECT_THAT(ReadWholeFile(OptimizeScriptPath()),
                HasSubstr("\"/temp/TQ4X_Softimage_Optimize_o.qmdl\", \"-opz=MergeContentQtr\""));
    EXPECT_EQ(Commands.size(), 1u);
}

TEST_F(HandOff, AToolThatFailsIsAWarning)
{
    ExitCode = 3;
    EXPECT_TRUE(RunOptimization(Options));
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("W Optimization failed"));
}

TEST_F(HandOff, AMissingStarterFailsEvenIfNothingWasAsked)
{
    fs::remove(Starter());
    Options.OptimizePrimitive = false;
    EXPECT_FALSE(RunOptimization(Options));
    ExpectNothingHappened();
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("E BrellStudio cannot be found(" + Starter() + ")"));
}

TEST_F(HandOff, AMissingRootHasNoPath)
{
    UseRoot("");
    EXPECT_FALSE(RunOptimization(Options));
    EXPECT_FALSE(ShowInViewer(Options, {}));
    ExpectNothingHappened();
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("E BrellStudio cannot be found", "E BrellStudio cannot be found"));
}

TEST_F(HandOff, TheRootMayEndInASeparator)
{
    for (const char* end : {"/", "\\"}) {
        Commands.clear();
        UseRoot(Path("root") + end);
        EXPECT_TRUE(RunOptimization(Options));
        const std::string starter = Path("root") + end + "tools/BrellStudioStarter/BrellStudioStarter.exe";
        EXPECT_THAT(Commands, ElementsAre("\"" + NativePath(starter) + "\" -daemon"));
    }
}

TEST_F(HandOff, RootsThatACommandLineCannotHold)
{
    for (const char* name : {"a\"b", "a`b", "a$HOME", "a\nb"}) {
        MessageRecorder::Messages().clear();
        const std::string root = Path(name);
        Install(root);
        UseRoot(root);
        EXPECT_FALSE(RunOptimization(Options)) << name;
        EXPECT_FALSE(ShowInViewer(Options, {})) << name;
        EXPECT_THAT(MessageRecorder::Messages(),
                    ElementsAre("E BrellStudio cannot be found(" + root +
                                    "/tools/BrellStudioStarter/BrellStudioStarter.exe)",
                                "E Can't open file(" + root + "/tools/BrellStudio/DccTemporary/Startup.py)"));
        EXPECT_THAT(Commands, IsEmpty());
        EXPECT_FALSE(fs::exists(root + "/tools/BrellStudio"));
    }
}

TEST_F(HandOff, OutputPathsThatAScriptCannotHold)
{
    for (const char* folder : {"/out\"x", "/out`x", "/out$x", "/out\nx"}) {
        MessageRecorder::Messages().clear();
        Options.OutputFolder = folder;
        EXPECT_FALSE(RunOptimization(Options)) << folder;
        EXPECT_FALSE(ShowInViewer(Options, {})) << folder;
        ExpectNothingHappened();
        const std::string message = "E Can't open file(" + AppendPath(folder, "house.qmdl") + ")";
        EXPECT_THAT(MessageRecorder::Messages(), ElementsAre(message, message));
    }
}

TEST_F(HandOff, MergePathsThatAScriptCannotHold)
{
    Options.MergeQmdl = true;
    Options.MergeQmdlPath = "/old/o`rm`.qmdl";
    EXPECT_FALSE(RunOptimization(Options));
    ExpectNothingHappened();
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("E Can't open file(/temp\\TQ4X_Softimage_Optimize_o`rm`.qmdl)"));
}

TEST_F(HandOff, AScriptThatCannotBeWritten)
{
    fs::create_directories(OptimizeScriptPath());
    EXPECT_FALSE(RunOptimization(Options));
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("E Can't open file(" + OptimizeScriptPath() + ")"));
    MessageRecorder::Messages().clear();
    std::ofstream(Path("root/tools/BrellStudio/DccTemporary")) << "";
    EXPECT_FALSE(ShowInViewer(Options, {}));
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("E Can't create folder(" + Path("root/tools/BrellStudio/DccTemporary") + ").",
                            "E Can't open file(" + ViewerScriptPath() + ")"));
    EXPECT_THAT(Commands, IsEmpty());
}

TEST_F(HandOff, ViewerWritesTheScriptAndStartsTheTool)
{
    EXPECT_TRUE(ShowInViewer(Options, {"wall"}));
    EXPECT_EQ(ReadWholeFile(ViewerScriptPath()), ViewerScript(ListViewerFiles(Options, {"wall"})));
    EXPECT_THAT(Commands, ElementsAre("\"" + Starter() + "\" \"" + ViewerScriptPath() + "\""));
    EXPECT_THAT(MessageRecorder::Messages(), IsEmpty());
}

TEST_F(HandOff, ViewerWritesItsScriptBeforeItLooksForTheStarter)
{
    fs::remove(Starter());
    EXPECT_FALSE(ShowInViewer(Options, {}));
    EXPECT_TRUE(fs::exists(ViewerScriptPath()));
    EXPECT_THAT(Commands, IsEmpty());
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("E BrellStudio cannot be found(" + Starter() + ")"));
}

TEST_F(HandOff, AViewerThatFailsIsAnError)
{
    ExitCode = 1;
    EXPECT_FALSE(ShowInViewer(Options, {}));
    EXPECT_THAT(MessageRecorder::Messages(), ElementsAre("E Failed to start BrellStudio"));
}

TEST_F(HandOff, ARealStarterGetsWhatItIsTold)
{
    CurrentPlatform().RunCommand = SystemPlatform().RunCommand;
    std::ofstream(Starter()) << "#!/bin/sh\nprintf '%s|' \"$@\" > '" << Path("said") << "'\nexit 5\n";
    fs::permissions(Starter(), fs::perms::owner_all);
    EXPECT_TRUE(RunOptimization(Options));
    EXPECT_EQ(ReadWholeFile(Path("said")), "-daemon|");
    EXPECT_FALSE(ShowInViewer(Options, {}));
    EXPECT_EQ(ReadWholeFile(Path("said")), ViewerScriptPath() + "|");
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("W Optimization failed", "E Failed to start BrellStudio"));
}

TEST_F(HandOff, AStarterThatCannotBeStartedFailsLikeOneThatDoes)
{
    CurrentPlatform().RunCommand = SystemPlatform().RunCommand;
    std::ofstream(Starter()) << "#!/bin/sh\nexit 0\n";
    fs::permissions(Starter(), fs::perms::owner_read);
    testing::internal::CaptureStderr();
    EXPECT_TRUE(RunOptimization(Options));
    EXPECT_FALSE(ShowInViewer(Options, {}));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr(Starter())) << "told by the shell";
    EXPECT_THAT(MessageRecorder::Messages(),
                ElementsAre("W Optimization failed", "E Failed to start BrellStudio"));
}

TEST_F(HandOff, ARelativeRootIsThatOfTheCurrentFolder)
{
    const fs::path former = fs::current_path();
    fs::current_path(Path("."));
    UseRoot("root");
    EXPECT_TRUE(RunOptimization(Options));
    EXPECT_TRUE(ShowInViewer(Options, {}));
    fs::current_path(former);
    EXPECT_TRUE(fs::exists(OptimizeScriptPath()));
    EXPECT_THAT(Commands, ElementsAre("\"root/tools/BrellStudioStarter/BrellStudioStarter.exe\" -daemon",
                                      "\"root/tools/BrellStudioStarter/BrellStudioStarter.exe\" "
                                      "\"root/tools/BrellStudio/DccTemporary/Startup.py\""));
}

std::vector<std::string> PathsOf(const std::vector<ViewerFile>& files)
{
    std::vector<std::string> paths;
    for (const ViewerFile& file : files)
        paths.push_back(file.Path + " as " + file.Document);
    return paths;
}

TEST(ListViewerFiles, EachKindOnlyWithItsFlag)
{
    ExportOptions options;
    options.OutputFileName = "a.b";
    options.OutputFolder = "f/";
    EXPECT_THAT(PathsOf(ListViewerFiles(options, {"y", "x"})),
                ElementsAre("f/a.b.qmdl as a.b", AppendPath("f/Textures", "x.qtex") + " as x",
                            AppendPath("f/Textures", "y.qtex") + " as y"));
    options.OutputQtex = false;
    options.OutputQskla = options.OutputQmata = options.OutputQmdla = options.OutputQenv = true;
    EXPECT_THAT(PathsOf(ListViewerFiles(options, {"x"})),
                ElementsAre("f/a.b.qmdl as a.b", "f/a.b.qskla as a.b", "f/a.b.qmata as a.b",
                            "f/a.b.qmdla as a.b", "f/a.b.qenv as a.b"));
}

TEST(ListViewerFiles, EnvironmentOnlyWithoutLightsAndCameras)
{
    for (const bool hasLights : {false, true}) {
        for (const bool hasCameras : {false, true}) {
            ExportOptions options;
            options.OutputFolder = "f/";
            options.OutputFileName = "a";
            options.OutputQmdl = false;
            options.OutputQenv = true;
            options.OutputQlgt = hasLights;
            options.OutputQcam = hasCameras;
            std::vector<std::string> expected;
            if (hasLights)
                expected.push_back("f/a.qlgt as a");
            if (hasCameras)
                expected.push_back("f/a.qcam as a");
            if (!hasLights && !hasCameras)
                expected.push_back("f/a.qenv as a");
            EXPECT_EQ(PathsOf(ListViewerFiles(options, {})), expected);
        }
    }
}

} // namespace
} // namespace tq4x
